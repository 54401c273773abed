#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <string>

#include "VexmoraSDK/views/VexmoraDelegate.h"

namespace VexmoraSDK {

/// What the host of one view hears of its ad: "drawn" or the names of the errors, one behind the
/// other; "nothing" at first. Any thread.
class Ear {
 public:
    void hear(const std::string& what) {
        const std::lock_guard lock(mutex_);
        heard_ += (heard_.empty() ? "" : ", ") + what;
    }

    std::string heard() const {
        const std::lock_guard lock(mutex_);
        return heard_.empty() ? "nothing" : heard_;
    }

    /// The delegate that hears for `ear`.
    static std::shared_ptr<VexmoraDelegate> delegate(const std::shared_ptr<Ear>& ear) {
        auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [ear](VexmoraView&) { ear->hear("drawn"); };
        delegate->didHaveError = [ear](VexmoraView&, const VexmoraError& error) {
            static constexpr std::array kNames = {
                "UnknownError", "ParsingError",         "RequestError",     "InvalidAdTypeError",
                "NoFill",       "InvalidViewTypeError", "ImageRequestError"};
            ear->hear(kNames.at(static_cast<std::size_t>(error.code()) - 1));
        };
        return delegate;
    }

 private:
    mutable std::mutex mutex_;
    std::string heard_;
};

}  // namespace VexmoraSDK
