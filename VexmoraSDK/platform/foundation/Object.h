// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "VexmoraSDK/Export.h"

namespace VexmoraSDK::platform {

/// Base of everything that is sent messages by name or stands as the sender of a notification.
/// Objects are held by `std::shared_ptr` only.
class VEXMORA_EXPORT Object : public std::enable_shared_from_this<Object> {
 public:
    static constexpr std::string_view kClassName = "Object";

    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /// The name that fatal reports give this object's class.
    virtual std::string_view className() const { return kClassName; }

    /// What distinguishes this object from others of its class in fatal reports; may be empty.
    virtual std::string fatalDetail() const { return {}; }

    /// Runs the method of that name on the calling thread. `argument` may be absent. A selector
    /// that the object does not answer is a fatal stop.
    void perform(std::string_view selector, Object* argument);

    /// Fills the outlet of that name while an interface file is loaded. An outlet that the object
    /// does not have, or that does not take an object of this class, is a fatal stop.
    virtual void setOutlet(std::string_view outlet, const std::shared_ptr<Object>& object);

 protected:
    using Method = void (*)(Object& self, Object* argument);

    /// The method that answers `selector`, or null. An override calls that of its base class for
    /// the selectors that it does not answer itself.
    virtual Method method(std::string_view selector) const;

    /// The method that calls a member function without arguments.
    template <auto function>
    static void call(Object& self, Object*) {
        callOn(self, function);
    }

    /// This object as the `T` that it is. One that no `std::shared_ptr` holds is a fatal stop.
    template <class T>
    std::shared_ptr<T> shared() {
        return std::static_pointer_cast<T>(self());
    }

 private:
    template <class Class>
    static void callOn(Object& self, void (Class::*function)()) {
        (static_cast<Class&>(self).*function)();
    }

    std::shared_ptr<Object> self();
};

}  // namespace VexmoraSDK::platform
