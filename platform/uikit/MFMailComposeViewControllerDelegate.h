#pragma once

namespace vistrel {
class MFMailComposeViewController;
class NSError;

/// Numbers are the phone's.
enum class MFMailComposeResult { Cancelled = 0, Saved = 1, Sent = 2, Failed = 3 };

class MFMailComposeViewControllerDelegate {
public:
    virtual ~MFMailComposeViewControllerDelegate() = default;
    /// Closes the composer. The error is null unless the result is Failed.
    virtual void
    mailComposeControllerDidFinishWithResultError(MFMailComposeViewController& controller,
                                                  MFMailComposeResult result,
                                                  const NSError* error) = 0;
};

}
