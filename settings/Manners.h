#pragma once

namespace vistrel {

/// Choices between what the phone did and what is kinder to its user. The phone's way is the
/// default; `[manners] careful=yes` in the settings file, or --careful, makes every careful choice.
struct Manners {
    /// A browser that comes back into view watches its page for media again.
    bool watchesPagesAgain = false;
    /// A download has succeeded when its transfer has ended and every byte is on the disk. A file
    /// that cannot be created is a failure. A download of unknown length also reports its end.
    bool confirmsDownloads = false;
    /// A response without a file (400 and above, 204, 304) is a failure and leaves no file.
    bool refusesErrorAnswers = false;
    /// A download never replaces a file: the new one's name gets " 2" before the extension.
    bool keepsExistingFiles = false;
    /// A failed download can be restarted, and continues where it stopped.
    bool retriesDownloads = false;
    /// A music file that cannot be opened leaves the volume slider alone. The phone sets it to 0
    /// and plays the rest of the queue in silence.
    bool keepsVolume = false;
    /// A film that is a file starts where it was left.
    bool remembersPositions = false;

    static Manners careful();
};

/// The current choices.
Manners manners();

}
