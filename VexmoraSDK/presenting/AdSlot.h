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

/// A placement in an app, without a screen. It asks for ads, keeps the one on show and tells its
/// host what becomes of them. Presenters wrap it; an app that draws by itself uses it directly.
///
/// It has no timer: its host calls `wake` when `untilNextWake` says so. It is used on the main
/// thread and calls its delegate there. It may be destroyed at any time, from inside the operations
/// of its delegate too, and calls none from then on.
class VEXMORA_EXPORT AdSlot {
 public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::milliseconds;

    /// What a slot asks for. Of `adSize`, `adType` and `viewType` the first that is given counts.
    struct Placement {
        /// The placement's name at the ad server. It goes into the request address as it is: a name
        /// that makes no valid address, with a space in it for instance, stops the program.
        std::string containerId{};
        /// "320x60", "320x100" or "468x60" for a banner, "300x250" or "728x90" for an interstitial.
        std::string adSize{};
        /// A type that no view shows brings an `InvalidAdTypeError`.
        std::optional<VexmoraAdType> adType{};
        std::optional<VexmoraViewType> viewType{};

        /// Whether an ad can be asked for: there is a container, and a type, a kind or a size that
        /// is one of the five.
        bool isComplete() const;
        /// The size of the banners that are asked for by size or by type, in points; else empty.
        platform::Size reservedSize() const;

        friend bool operator==(const Placement&, const Placement&) = default;
    };

    enum class State {
        empty,    ///< nothing is asked for
        loading,  ///< the first ad has not come yet
        ready,    ///< an ad is drawn; so it stays while the next one loads, and when that fails
        failed,   ///< there was no ad to show
    };

    /// Why a request brought no ad.
    struct Failure {
        /// One of `VexmoraErrorCodes`, or `kTimedOut`.
        std::intptr_t code = kTimedOut;
        /// For developers.
        std::string description;

        /// What an error of an ad view's says.
        static Failure of(const VexmoraError& error);
    };
    static constexpr std::intptr_t kTimedOut = 0;

    /// What an ad says, for hosts that lay it out themselves. Texts are UTF-8; only native ads have
    /// a title, a description and a display name.
    struct Ad {
        VexmoraAdType adType = VexmoraAdType::native;
        std::string title;
        std::string description;
        std::string displayName;
        std::string clickUrl;
        std::shared_ptr<const platform::Image> picture;
    };

    /// What a host wants to hear. The six operations of an ad view's delegate, all of them on the
    /// main thread, and these; each may be empty.
    struct Delegate : VexmoraDelegate {
        /// `state()` is another.
        std::function<void()> stateChanged;
        /// A request brought no ad. Called once for each such request, with its first error.
        std::function<void(const Failure& failure)> failed;
        /// At least half of the ad on show was visible for one second without a break, in an active
        /// app. Called once for each ad.
        std::function<void()> becameViewable;
        /// The time of the next `wake` is another, or there is still one after a call of `wake`:
        /// set the timer to `untilNextWake()`, or stop it.
        std::function<void()> nextWakeChanged;
    };

    explicit AdSlot(Delegate delegate) noexcept;
    ~AdSlot();
    AdSlot(const AdSlot&) = delete;
    AdSlot& operator=(const AdSlot&) = delete;

    const Placement& placement() const;
    /// Another placement: shows nothing and asks anew at the next `wake`; what the former one still
    /// brings is not heard.
    void setPlacement(Placement placement) noexcept;
    /// Asks anew at the next `wake`, with a fresh view. The ad on show stays until the next is
    /// drawn; a request under way is given up. Does nothing while the placement is incomplete.
    void reload() noexcept;

    State state() const;
    /// The view of the ad on show; absent when none is drawn. Give it no other container.
    const std::shared_ptr<VexmoraView>& view() const;
    /// The ad on show.
    const std::optional<Ad>& ad() const;
    /// Taps the ad on show, which opens its address. Does nothing unless a banner or native ad is
    /// ready.
    void open() noexcept;
    /// Whether the ad on show became viewable.
    bool isViewable() const;
    /// Why the last request brought no ad; absent once one did and while the first ad is loading.
    const std::optional<Failure>& failure() const;

    /// How long ago the ad on show was drawn; absent when there is none.
    std::optional<Duration> age() const;
    /// The age from which an ad should not be presented any more; 0 for never. An hour at first.
    Duration expiresAfter() const;
    void setExpiresAfter(Duration age);
    /// Whether a screen may present the ad on show: an interstitial that is drawn, not too old, in
    /// no window and was not presented before.
    bool isPresentable() const;
    /// Called by a screen when it presents the ad on show.
    void setPresented();

    /// For how long an ad is shown before the next is asked for; 0, as at first, for ever, less
    /// than 10 seconds for 10. Only time in which the placement is visible and active counts. After
    /// failures the wait doubles, up to 5 minutes; as long is waited for what a request brings.
    /// Interstitials are never asked for anew so, nor is a type that no view shows.
    Duration refreshInterval() const;
    void setRefreshInterval(Duration interval) noexcept;
    /// An ad that is not drawn by then has failed, and is dropped if it still comes; 0 for no
    /// limit. A minute at first: of a picture that does not arrive nothing else tells.
    Duration timeout() const;
    void setTimeout(Duration timeout) noexcept;

    /// How much of the placement can be seen, from 0, as at first, to 1. An interstitial is seen
    /// while a screen presents it; each new one begins with 0.
    double visibleFraction() const;
    void setVisibleFraction(double fraction) noexcept;
    /// Whether the app runs before the user's eyes, and is not suspended or hidden; true at first.
    /// An unfocused window on a desktop is active.
    bool isActive() const;
    void setActive(bool active) noexcept;
    /// The size in points of the screen that is to present interstitials; they get it when they are
    /// asked for, because their pictures are centred in it.
    platform::Size screenSize() const;
    void setScreenSize(platform::Size size);

    /// In what time `wake` should be called next, 0 for at once and at most 24 hours; absent when
    /// nothing is waited for.
    std::optional<Duration> untilNextWake() const;
    /// Does what is due. May be called at any time and as often as one likes.
    void wake() noexcept;
    /// Wakes every slot that is due, for a host whose loop does not keep a timer for each. Returns
    /// in what time it should be called next; absent when no slot waits for anything.
    static std::optional<Duration> wakeAll() noexcept;

    /// Has the slot use another clock, which never goes back, before it asks for anything. Its own
    /// stands still while the device sleeps, where the system has such a clock; only the age of ads
    /// goes on.
    void setClock(std::function<Time()> clock);

 private:
    struct Impl;

    const std::shared_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
