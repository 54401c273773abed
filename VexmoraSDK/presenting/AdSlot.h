// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"
#include "VexmoraSDK/platform/images/Image.h"
#include "VexmoraSDK/types/VexmoraAdType.h"
#include "VexmoraSDK/types/VexmoraViewType.h"
#include "VexmoraSDK/views/VexmoraDelegate.h"
#include "VexmoraSDK/views/VexmoraView.h"

namespace VexmoraSDK {

/// A placement in an app, without a screen. It requests ads, keeps the one on show and tells its
/// host of each change. Presenters wrap it; an app that draws by itself uses it directly.
///
/// It has no timer: its host calls `wake` when `untilNextWake` says so. It is used on the main
/// thread and calls its delegate there. It may be destroyed at any time, from inside the operations
/// of its delegate too, and calls none from then on.
class VEXMORA_EXPORT AdSlot {
 public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::milliseconds;

    /// The ad that a slot requests. The first of `adSize`, `adType` and `viewType` that is set
    /// counts.
    struct Placement {
        /// The placement's name at the ad server. It goes into the request URL unescaped. A name
        /// that makes the URL invalid, such as one with a space, stops the program.
        std::string containerId{};
        /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial.
        std::string adSize{};
        /// A type that no view shows causes an `InvalidAdTypeError`.
        std::optional<VexmoraAdType> adType{};
        std::optional<VexmoraViewType> viewType{};

        /// Whether an ad can be requested: there is a container, and an ad type, a view type or one
        /// of the five sizes.
        bool isComplete() const;
        /// The size in points of a banner requested by size or ad type; empty otherwise.
        platform::Size reservedSize() const;

        friend bool operator==(const Placement&, const Placement&) = default;
    };

    enum class State {
        empty,    ///< nothing is requested
        loading,  ///< the first ad has not arrived yet
        ready,    ///< an ad is drawn; unchanged while the next one loads, and if that fails
        failed,   ///< no ad arrived
    };

    /// Why a request brought no ad.
    struct Failure {
        /// One of `VexmoraErrorCodes`, or `kTimedOut`.
        std::intptr_t code = kTimedOut;
        /// For developers.
        std::string description;

        /// Takes code and description from `error`.
        static Failure of(const VexmoraError& error);
    };
    static constexpr std::intptr_t kTimedOut = 0;

    /// The contents of an ad, for hosts that lay it out themselves. Texts are UTF-8; only native
    /// ads have a title, a description and a display name.
    struct Ad {
        VexmoraAdType adType = VexmoraAdType::native;
        std::string title;
        std::string description;
        std::string displayName;
        std::string clickUrl;
        std::shared_ptr<const platform::Image> picture;
    };

    /// The host's callbacks: the six operations of an ad view's delegate and these four, all on the
    /// main thread. Each may be empty.
    struct Delegate : VexmoraDelegate {
        /// `state()` has changed.
        std::function<void()> stateChanged;
        /// A request brought no ad. Called once per failed request, with its first error.
        std::function<void(const Failure& failure)> failed;
        /// At least half of the ad on show was visible for one second without a break, in an active
        /// app. Called once for each ad.
        std::function<void()> becameViewable;
        /// The time of the next `wake` has changed, or another follows the `wake` that just ran.
        /// Set the timer to `untilNextWake()`, or stop it.
        std::function<void()> nextWakeChanged;
    };

    explicit AdSlot(Delegate delegate) noexcept;
    ~AdSlot();
    AdSlot(const AdSlot&) = delete;
    AdSlot& operator=(const AdSlot&) = delete;

    const Placement& placement() const;
    /// Removes the ad on show and requests one for `placement` at the next `wake`. Results of
    /// earlier requests are ignored.
    void setPlacement(Placement placement) noexcept;
    /// Requests another ad at the next `wake`, with a new view. The ad on show stays until the next
    /// is drawn; a request in flight is given up. Does nothing while the placement is incomplete.
    void reload() noexcept;

    State state() const;
    /// The view of the ad on show; absent when none is drawn. Do not set its container.
    const std::shared_ptr<VexmoraView>& view() const;
    /// The ad on show.
    const std::optional<Ad>& ad() const;
    /// Taps the ad on show, which opens its URL. Does nothing unless a banner or native ad is
    /// ready.
    void open() noexcept;
    /// Whether the ad on show became viewable.
    bool isViewable() const;
    /// Why the last request brought no ad; absent once one did and while the first ad is loading.
    const std::optional<Failure>& failure() const;

    /// The time since the ad on show was drawn; absent when there is none.
    std::optional<Duration> age() const;
    /// The age from which an ad is not presented; 0 means no limit. Default: an hour.
    Duration expiresAfter() const;
    void setExpiresAfter(Duration age);
    /// Whether a screen may present the ad on show: an interstitial that is drawn, not too old, not
    /// presented before and in no window.
    bool isPresentable() const;
    /// Called by a screen when it presents the ad on show.
    void setPresented();

    /// The time after which an ad is replaced, at least 10 seconds; 0, the default, means never.
    /// Only time counts in which the placement is visible and the app active. After each failure
    /// the interval doubles, up to 5 minutes. A request in flight delays the next by at most 5
    /// minutes or the interval, whichever is longer. Interstitials and types that no view shows are
    /// not refreshed.
    Duration refreshInterval() const;
    void setRefreshInterval(Duration interval) noexcept;
    /// The time after which a request fails and a later ad is dropped; 0 means no limit. Default: a
    /// minute. Nothing else reports a picture that never arrives.
    Duration timeout() const;
    void setTimeout(Duration timeout) noexcept;

    /// The visible part of the placement, from 0 (the default) to 1. An interstitial is visible
    /// while a screen presents it; each new one starts at 0.
    double visibleFraction() const;
    void setVisibleFraction(double fraction) noexcept;
    /// Whether the app is visible, not suspended or hidden. Default: true. An unfocused desktop
    /// window is active.
    bool isActive() const;
    void setActive(bool active) noexcept;
    /// The size in points of the screen that presents interstitials. They get it when they are
    /// requested, because their pictures are centred in it.
    platform::Size screenSize() const;
    void setScreenSize(platform::Size size);

    /// The time until the next call of `wake`, 0 for at once and at most 24 hours; absent when the
    /// slot waits for nothing.
    std::optional<Duration> untilNextWake() const;
    /// Does the work that is due. May be called at any time, as often as you like.
    void wake() noexcept;
    /// Wakes every slot that is due, for a host without a timer per slot. Returns the time until
    /// the next call; absent when no slot waits for anything.
    static std::optional<Duration> wakeAll() noexcept;

    /// Replaces the clock, before the first request. A clock never goes back. The default one stops
    /// while the device sleeps, where the system has such a clock; only the age of ads goes on.
    void setClock(std::function<Time()> clock);

 private:
    struct Impl;

    const std::shared_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
