#pragma once

namespace vistrel::host {

/// A picture that the host draws itself inside the view tree: a web page, a video. The view that
/// owns it stands in the tree like any other; the walk hands it to the output, which knows how to
/// place it.
class ForeignContent {
public:
    virtual ~ForeignContent() = default;
};

}
