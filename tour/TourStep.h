#pragma once
#include <functional>
#include <string>

namespace vistrel {

/// One step of a guided tour.
struct TourStep {
    std::string name;                           ///< of its picture file
    std::string says;                           ///< what happens, one line
    std::function<void()> act = {};             ///< what the visitor does; may be empty
    std::function<bool()> holds = {};           ///< polled until it is true
    std::function<std::string()> measured = {}; ///< figures for the line; may be empty
    double timeout = 15;                        ///< seconds after which the step has failed
    double settle = 0.5;                        ///< seconds from then to the picture
};

}
