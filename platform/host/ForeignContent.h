#pragma once

namespace vistrel::host {

/// Content that the host itself draws inside the view tree: a web page, a video. The view that
/// owns it is in the tree like any other; the walk passes it to the output, which knows how to
/// place it.
class ForeignContent {
public:
    virtual ~ForeignContent() = default;
};

}
