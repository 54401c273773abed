#pragma once

#include <memory>
#include <string>

#include "VexmoraSDK/platform/foundation/Object.h"

namespace VexmoraSDK::platform {

/// What an observer's selector gets as its argument.
class Notification : public Object {
 public:
    static constexpr std::string_view kClassName = "Notification";

    Notification(std::string name, std::shared_ptr<Object> object)
        : name_(std::move(name)), object_(std::move(object)) {}

    std::string_view className() const override { return kClassName; }
    const std::string& name() const { return name_; }
    /// The sender; may be absent.
    const std::shared_ptr<Object>& object() const { return object_; }

 private:
    std::string name_;
    std::shared_ptr<Object> object_;
};

}  // namespace VexmoraSDK::platform
