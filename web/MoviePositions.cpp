#include "web/MoviePositions.h"

#include "platform/foundation/NSUserDefaults.h"

#include <string>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kKey = "MoviePositions";
constexpr std::size_t kMostFilms = 50;
constexpr double kBarelyBegun = 10;  ///< seconds
constexpr double kAlmostOver = 0.95; ///< of the duration

/// The film becomes the latest one; 0 removes it.
void store(const NSURL& film, double position) {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    Value::Dictionary positions = defaults.objectForKey(kKey).dictionary();
    const std::string& address = film.absoluteString();
    positions.erase(address);
    if (position > 0)
        positions.set(address, position);
    while (positions.size() > kMostFilms)
        positions.erase(std::string(positions.begin()->key));
    defaults.setObjectForKey(std::move(positions), kKey);
}

}

double MoviePositions::positionOf(const NSURL& film) {
    const Value positions = NSUserDefaults::standardUserDefaults().objectForKey(kKey);
    const Value* position = positions.find(film.absoluteString());
    return position ? position->doubleValue() : 0;
}

void MoviePositions::leave(const NSURL& film, double position, double duration) {
    if (!film.isFileURL())
        return;
    const bool isInside = position >= kBarelyBegun && position < duration * kAlmostOver;
    store(film, isInside ? position : 0);
}

void MoviePositions::forget(const NSURL& film) {
    if (positionOf(film) > 0)
        store(film, 0);
}

void MoviePositions::move(const NSURL& film, const NSURL& to) {
    const double position = positionOf(film);
    forget(film);
    if (position > 0)
        store(to, position);
}

}
