#include "ads/Timing/GADTiming.h"

#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADTextualDescription.h"
#include "platform/foundation/NSRunLoop.h"

#include <array>
#include <cstdio>

namespace vistrel {

std::shared_ptr<GADTiming> GADTiming::withCategory(std::string category) {
    if (category.empty())
        return nullptr;
    return std::shared_ptr<GADTiming>(new GADTiming(std::move(category)));
}

std::shared_ptr<GADTiming>
GADTiming::withDictionaryRepresentation(const Value::Dictionary& representation) {
    const Value* category = representation.find("category");
    auto timing = withCategory(std::string(category ? category->string() : ""));
    if (!timing)
        return nullptr;
    if (const Value* start = representation.find("start"))
        timing->startSeconds_ = start->doubleValue();
    if (const Value* end = representation.find("end"))
        timing->endSeconds_ = end->doubleValue();
    if (const Value* userData = representation.find("userData"))
        timing->userData_ = userData->dictionary();
    return timing;
}

std::shared_ptr<GADTiming> GADTiming::copy() const {
    return withDictionaryRepresentation(dictionaryRepresentation());
}

double GADTiming::counter() {
    return NSRunLoop::now();
}

void GADTiming::start() {
    startSeconds_ = counter();
    endSeconds_ = 0;
}

void GADTiming::end() {
    if (startSeconds_ > 0)
        endSeconds_ = counter();
}

void GADTiming::reset() {
    startSeconds_ = 0;
    endSeconds_ = 0;
}

std::uint32_t GADTiming::elapsedMilliseconds() const {
    const double end = endSeconds_ < startSeconds_ ? counter() : endSeconds_;
    return GADNumberUtilities::saturated<std::uint32_t>((end - startSeconds_) * 1000);
}

std::string GADTiming::elapsedMillisecondsString() const {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%d", static_cast<int>(elapsedMilliseconds()));
    return buffer.data();
}

void GADTiming::setValueForKey(Value value, const std::string& key) {
    if (!value.isNull())
        userData_.set(key, std::move(value));
}

Value::Dictionary GADTiming::dictionaryRepresentation() const {
    Value::Dictionary representation{
        {"category", std::string_view(category_)}, {"start", startSeconds_}, {"end", endSeconds_}};
    if (!userData_.empty())
        representation.set("userData", userData_);
    return representation;
}

std::string GADTiming::description() const {
    return "GADTiming (" + gadAddressText(this) +
           "): " + gadTextualDescription(dictionaryRepresentation());
}

}
