#pragma once
#include <cassert>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace vistrel {

/// A weak reference to `object` as one of its base classes:
/// `weakReference<UIAlertViewDelegate>(this)`. This is how an object names itself as a delegate
/// that is not retained. The object is owned by a std::shared_ptr, so constructors cannot use it.
template <typename Base, typename T>
std::weak_ptr<Base> weakReference(T* object) {
    const auto owner = object->weak_from_this().lock();
    assert(owner && "the object is not owned by a std::shared_ptr, or is being destroyed");
    return std::shared_ptr<Base>(owner, object);
}

/// A callback into an object that may be gone by the time it is called. `function` is a member
/// function of T, or takes `T&` as its first parameter:
///
///     button->addTarget(weakly(this, &Player::play), UIControlEventTouchUpInside);
///     timer = after(0.5, weakly(this, [url](Page& page) { page.load(url); }));
///
/// The object is kept alive during the call. Once it is gone, a call does nothing and returns a
/// value-initialised result. The object is owned by a std::shared_ptr, as for weakReference.
template <typename T, typename Function>
auto weakly(T* object, Function function) {
    return
        [weak = weakReference<T>(object), function = std::move(function)]<typename... Arguments>(
            Arguments&&... arguments) -> std::invoke_result_t<const Function&, T&, Arguments...> {
            using Result = std::invoke_result_t<const Function&, T&, Arguments...>;
            if (const auto self = weak.lock())
                return std::invoke(function, *self, std::forward<Arguments>(arguments)...);
            if constexpr (!std::is_void_v<Result>)
                return Result{};
        };
}

}
