// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "VexmoraSDK/views/VexmoraDelegate.h"

namespace VexmoraSDK {

/// Records the events of one view's delegate: "drawn" and the names of errors, in order and
/// separated by commas; initially "nothing". Its members may be called from any thread.
class EventRecorder : public std::enable_shared_from_this<EventRecorder> {
 public:
    using Listener = std::function<void(const std::string& event)>;

    /// `listener` is called with each event, on the thread of the event.
    explicit EventRecorder(Listener listener = [](const std::string&) {})
        : listener_(std::move(listener)) {}

    std::string events() const {
        const std::lock_guard lock(mutex_);
        return events_.empty() ? "nothing" : events_;
    }

    /// A delegate that records; it keeps this object alive.
    std::shared_ptr<VexmoraDelegate> delegate() {
        auto delegate = std::make_shared<VexmoraDelegate>();
        delegate->didReceiveAd = [self = shared_from_this()](VexmoraView&) {
            self->record("drawn");
        };
        delegate->didHaveError = [self = shared_from_this()](VexmoraView&,
                                                             const VexmoraError& error) {
            static constexpr std::array kNames = {
                "UnknownError", "ParsingError",         "RequestError",     "InvalidAdTypeError",
                "NoFill",       "InvalidViewTypeError", "ImageRequestError"};
            self->record(kNames.at(static_cast<std::size_t>(error.code()) - 1));
        };
        return delegate;
    }

 private:
    void record(const std::string& event) {
        {
            const std::lock_guard lock(mutex_);
            events_ += (events_.empty() ? "" : ", ") + event;
        }
        listener_(event);
    }

    const Listener listener_;
    mutable std::mutex mutex_;
    std::string events_;
};

}  // namespace VexmoraSDK
