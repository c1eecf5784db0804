#pragma once
#include <glib-object.h>

#include <utility>

namespace vistrel {

/// Owns one reference to a GObject. The maker says where it comes from: adopt takes over a
/// reference that the caller has, ref adds one, sink also takes a floating one.
template <typename T>
class NativeReference {
public:
    NativeReference() = default;
    static NativeReference adopt(T* object) { return NativeReference(object); }
    static NativeReference ref(T* object) {
        return NativeReference(object ? static_cast<T*>(g_object_ref(object)) : nullptr);
    }
    static NativeReference sink(T* object) {
        return NativeReference(object ? static_cast<T*>(g_object_ref_sink(object)) : nullptr);
    }
    NativeReference(const NativeReference& other)
        : NativeReference(ref(other.object_)) {}
    NativeReference(NativeReference&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    NativeReference& operator=(NativeReference other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~NativeReference() {
        if (object_)
            g_object_unref(object_);
    }

    T* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    explicit NativeReference(T* object)
        : object_(object) {}
    T* object_ = nullptr;
};

}
