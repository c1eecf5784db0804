#pragma once
#include <gio/gio.h>

#include <memory>
#include <utility>

namespace vistrel {

/// A signal handler of a native object, disconnected when this is destroyed. The object may be
/// finalized first. A handler may destroy its own connection while it runs.
class SignalConnection {
public:
    SignalConnection() = default;
    explicit SignalConnection(GClosure* closure)
        : closure_(closure) {}
    SignalConnection(SignalConnection&& other) noexcept
        : closure_(std::exchange(other.closure_, nullptr)) {}
    SignalConnection& operator=(SignalConnection other) noexcept {
        std::swap(closure_, other.closure_);
        return *this;
    }
    ~SignalConnection() {
        if (!closure_)
            return;
        g_closure_invalidate(closure_);
        g_closure_unref(closure_);
    }

private:
    GClosure* closure_ = nullptr;
};

enum class SignalPhase { BeforeDefault, AfterDefault };

namespace detail {

template <typename Signature>
struct SignalTrampoline;

template <typename Result, typename... Arguments>
struct SignalTrampoline<Result(Arguments...)> {
    template <typename Function>
    static Result call(gpointer, Arguments... arguments, gpointer function) {
        return (*static_cast<Function*>(function))(arguments...);
    }
};

template <typename Function>
void destroyFunction(gpointer function) {
    delete static_cast<Function*>(function);
}

}

/// Calls `function` whenever `instance` emits `signal`. `Signature` is that of the signal, without
/// the instance and the user data:
///
///     closed_ = connectSignal<gboolean()>(window, "close-request", weakly(this, &Window::close));
template <typename Signature, typename Function>
[[nodiscard]] SignalConnection connectSignal(gpointer instance, const char* signal,
                                             Function function,
                                             SignalPhase phase = SignalPhase::BeforeDefault) {
    GClosure* closure =
        g_cclosure_new(G_CALLBACK(&detail::SignalTrampoline<Signature>::template call<Function>),
                       new Function(std::move(function)),
                       [](gpointer held, GClosure*) { detail::destroyFunction<Function>(held); });
    g_closure_ref(closure);
    g_closure_sink(closure);
    g_signal_connect_closure(instance, signal, closure,
                             static_cast<gboolean>(phase == SignalPhase::AfterDefault));
    return SignalConnection(closure);
}

/// Calls `start` with `arguments`, followed by a GAsyncReadyCallback that passes the result to
/// `done`, once. Objects that may be gone by then are reached through weakly:
///
///     callAsync(weakly(this, &Cookies::received), webkit_cookie_manager_get_all_cookies,
///               manager_, cancellable_.get());
template <typename Function, typename Start, typename... Arguments>
void callAsync(Function done, Start start, Arguments... arguments) {
    const GAsyncReadyCallback ready = [](GObject*, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Function> function(static_cast<Function*>(data));
        (*function)(result);
    };
    start(arguments..., ready, new Function(std::move(done)));
}

/// Calls `function` once on the main loop, after a delay.
template <typename Function>
void callLater(Function function, guint milliseconds = 0, int priority = G_PRIORITY_DEFAULT) {
    g_timeout_add_full(
        priority, milliseconds,
        [](gpointer data) -> gboolean {
            (*static_cast<Function*>(data))();
            return G_SOURCE_REMOVE;
        },
        new Function(std::move(function)), detail::destroyFunction<Function>);
}

}
