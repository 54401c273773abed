// SPDX-License-Identifier: MIT
#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <chrono>
#include <memory>

#include "VexmoraSDK/VexmoraSDK.h"
#include "VexmoraSDK/sdl/VexmoraSdlLoop.h"
#include "VexmoraSDK/sdl/VexmoraSdlScreen.h"
#include "VexmoraSDK/sdl/VexmoraSdlView.h"
#include "tests/LocalAds.h"
#include "tests/RecordingOpener.h"

using testing::ElementsAre;
using testing::IsEmpty;
using namespace VexmoraSDK;
using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

int allocations = 0;
/// Counts the main thread only, because the library's threads may still be closing a connection.
thread_local bool countsAllocations = false;

int uploads = 0;

/// The function of SDL that one of the same name here stands before.
template <class Function>
Function* nextOf(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// A game in a window without a screen: 400 × 300 points, each `scale` pixels wide.
class SdlTest : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        SDL_SetHint(SDL_HINT_VIDEODRIVER, "dummy");
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        loop_ = new VexmoraSdlLoop;
    }
    static void TearDownTestSuite() {
        delete loop_;
        SDL_Quit();
    }

    struct Window {
        explicit Window(int scale = 1)
            : window(SDL_CreateWindow("", 0, 0, 400 * scale, 300 * scale, 0), SDL_DestroyWindow),
              renderer(SDL_CreateRenderer(window.get(), -1, SDL_RENDERER_SOFTWARE),
                       SDL_DestroyRenderer) {
            if (scale > 1) SDL_RenderSetLogicalSize(renderer.get(), 400, 300);
        }

        void clear() const {
            SDL_SetRenderDrawColor(renderer.get(), 255, 255, 255, 255);
            SDL_RenderClear(renderer.get());
        }

        /// The colour of a pixel of the output.
        std::uint32_t colorAt(int x, int y) const {
            std::uint32_t color = 0;
            const SDL_Rect pixel = {x, y, 1, 1};
            // Not shifted by the logical size.
            int width = 0;
            int height = 0;
            SDL_RenderGetLogicalSize(renderer.get(), &width, &height);
            SDL_RenderSetLogicalSize(renderer.get(), 0, 0);
            SDL_RenderReadPixels(renderer.get(), &pixel, SDL_PIXELFORMAT_ARGB8888, &color, 4);
            SDL_RenderSetLogicalSize(renderer.get(), width, height);
            return color;
        }

        std::uint32_t id() const { return SDL_GetWindowID(window.get()); }

        std::unique_ptr<SDL_Window, void (*)(SDL_Window*)> window;
        std::unique_ptr<SDL_Renderer, void (*)(SDL_Renderer*)> renderer;
    };

    template <class Condition>
    static bool waitFor(Condition condition) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            const auto next = loop_->run();
            SDL_WaitEventTimeout(nullptr, next ? static_cast<int>(next->count()) : 1000);
            SDL_PumpEvents();
            SDL_FlushEvent(VexmoraSdlLoop::wakeUpEvent());
        }
        return true;
    }

    AdSlot::Delegate delegate() {
        AdSlot::Delegate delegate;
        const auto on = [this](const char* what) {
            return [this, what](VexmoraView&) { heard_.emplace_back(what); };
        };
        delegate.willLeaveApplication = on("leaves");
        delegate.willDismissScreen = on("will dismiss");
        delegate.didDismissScreen = on("did dismiss");
        return delegate;
    }

    static void load(AdSlot& slot, const char* size) {
        slot.setPlacement({.containerId = "home", .adSize = size});
        ASSERT_TRUE(waitFor([&] { return slot.state() == AdSlot::State::ready; }));
    }

    static SDL_Event mouse(std::uint32_t type, int x, int y, std::uint32_t window) {
        SDL_Event event{};
        event.type = type;
        if (type == SDL_MOUSEMOTION) {
            event.motion.windowID = window;
            event.motion.x = x;
            event.motion.y = y;
        } else {
            event.button.windowID = window;
            event.button.button = SDL_BUTTON_LEFT;
            event.button.x = x;
            event.button.y = y;
        }
        return event;
    }

    static SDL_Event finger(std::uint32_t type, int id, float x, float y, std::uint32_t window) {
        SDL_Event event{};
        event.type = type;
        event.tfinger.fingerId = id;
        event.tfinger.x = x / 400;
        event.tfinger.y = y / 300;
        event.tfinger.windowID = window;
        return event;
    }

    static SDL_Event key(SDL_Keycode code, std::uint32_t window) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.windowID = window;
        event.key.keysym.sym = code;
        return event;
    }

    AdServer& server_ = LocalAds::server();
    RecordingOpener opener_;
    std::vector<std::string> heard_;
    static inline VexmoraSdlLoop* loop_ = nullptr;
};

constexpr SDL_FRect kPlace = {10, 20, 320, 60};

TEST_F(SdlTest, DrawsTheAdSharplyInItsPlaceOnEveryScreen) {
    AdSlot slot(delegate());
    load(slot, "320x60");
    for (const int scale : {1, 2, 3}) {
        const Window window(scale);
        VexmoraSdlView view(window.renderer.get(), slot);
        window.clear();
        view.draw(kPlace);
        // The picture is red at the left and blue at the right.
        EXPECT_EQ(window.colorAt(10 * scale, 20 * scale), kRed) << scale;
        EXPECT_EQ(window.colorAt(10 * scale - 1, 20 * scale), kWhite);
        EXPECT_EQ(window.colorAt(330 * scale - 1, 80 * scale - 1), kBlue);
        EXPECT_EQ(window.colorAt(330 * scale - 1, 80 * scale), kWhite);
        EXPECT_EQ(window.colorAt(168 * scale, 50 * scale), kRed);
        EXPECT_EQ(window.colorAt(172 * scale, 50 * scale), kBlue);
    }
    EXPECT_EQ(slot.visibleFraction(), 0) << "nobody draws it any more";
}

TEST_F(SdlTest, FitsTheAdIntoItsPlaceOrLeavesItAsItIs) {
    AdSlot slot(delegate());
    load(slot, "320x60");
    const Window window;
    VexmoraSdlView view(window.renderer.get(), slot);
    window.clear();
    view.draw({0, 0, 160, 100});
    EXPECT_EQ(window.colorAt(0, 34), kWhite);
    EXPECT_EQ(window.colorAt(0, 36), kRed);
    EXPECT_EQ(window.colorAt(159, 64), kBlue);
    view.setFillMode(FillMode::asIs);
    window.clear();
    view.draw({0, 0, 160, 100});
    EXPECT_EQ(window.colorAt(319, 59), kBlue);
}

TEST_F(SdlTest, TapsByMouseAndByFingerOpenTheAdAndDragsDoNot) {
    const Window window;
    const Window other;
    AdSlot slot(delegate());
    load(slot, "320x60");
    VexmoraSdlView view(window.renderer.get(), slot);
    view.draw(kPlace);
    const auto id = window.id();
    const auto press = [&](int x, int y) {
        return view.handle(mouse(SDL_MOUSEBUTTONDOWN, x, y, id));
    };
    const auto release = [&](int x, int y) {
        return view.handle(mouse(SDL_MOUSEBUTTONUP, x, y, id));
    };

    EXPECT_TRUE(press(20, 30));
    EXPECT_THAT(heard_, IsEmpty());
    EXPECT_TRUE(release(22, 30));
    EXPECT_THAT(heard_, ElementsAre("leaves"));
    EXPECT_THAT(opener_.opened(), ElementsAre(server_.address() + "/landing/red?sig=%41%c3"));

    EXPECT_TRUE(view.handle(finger(SDL_FINGERDOWN, 7, 20, 30, id)));
    EXPECT_FALSE(view.handle(finger(SDL_FINGERUP, 8, 20, 30, id))) << "another finger";
    EXPECT_TRUE(view.handle(finger(SDL_FINGERUP, 7, 20, 30, id)));
    EXPECT_THAT(heard_, ElementsAre("leaves", "leaves"));

    press(20, 30);
    EXPECT_TRUE(view.handle(mouse(SDL_MOUSEMOTION, 40, 30, id)));
    EXPECT_TRUE(release(20, 30)) << "a drag";
    EXPECT_FALSE(press(5, 30)) << "beside the ad";
    EXPECT_FALSE(release(20, 30));
    EXPECT_FALSE(view.handle(mouse(SDL_MOUSEBUTTONDOWN, 20, 30, other.id())));
    auto madeUp = mouse(SDL_MOUSEBUTTONDOWN, 20, 30, id);
    madeUp.button.which = SDL_TOUCH_MOUSEID;
    EXPECT_FALSE(view.handle(madeUp)) << "SDL says so after a touch";
    EXPECT_THAT(heard_, ElementsAre("leaves", "leaves"));
    opener_.opened();
}

TEST_F(SdlTest, LeavesToTheGameWhatIsDoneWhereNoAdIsSeenAnyMore) {
    const Window window;
    AdSlot slot(delegate());
    load(slot, "320x60");
    VexmoraSdlView view(window.renderer.get(), slot);
    const auto id = window.id();
    const auto drawUnderMouse = [&] {
        view.draw(kPlace);
        view.handle(mouse(SDL_MOUSEMOTION, 20, 30, id));
        EXPECT_TRUE(view.isHovered());
    };
    const auto isLeft = [&] {
        EXPECT_FALSE(view.isHovered());
        EXPECT_FALSE(view.handle(mouse(SDL_MOUSEBUTTONDOWN, 20, 30, id)));
        EXPECT_FALSE(view.handle(mouse(SDL_MOUSEBUTTONUP, 20, 30, id)));
    };

    drawUnderMouse();
    view.setVisibleFraction(0);
    isLeft();
    view.setVisibleFraction(1);
    EXPECT_FALSE(view.isHovered()) << "nobody said where the mouse is now";
    drawUnderMouse();
    view.handle(mouse(SDL_MOUSEBUTTONDOWN, 20, 30, id));
    view.setVisibleFraction(0);
    view.handle(mouse(SDL_MOUSEBUTTONUP, 20, 30, id));
    view.setVisibleFraction(1);

    drawUnderMouse();
    slot.setPlacement({});
    isLeft();
    EXPECT_THAT(heard_, IsEmpty());
}

TEST_F(SdlTest, RedrawsLostTexturesAndPausesWhileTheWindowIsHidden) {
    const Window window;
    AdSlot slot(delegate());
    load(slot, "320x60");
    VexmoraSdlView view(window.renderer.get(), slot);
    for (const int lost : {0, int{SDL_RENDER_TARGETS_RESET}, int{SDL_RENDER_DEVICE_RESET}}) {
        SDL_Event event{};
        event.type = static_cast<std::uint32_t>(lost);
        view.handle(event);
        window.clear();
        view.draw(kPlace);
        EXPECT_EQ(window.colorAt(11, 21), kRed) << lost;
    }

    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.windowID = window.id();
    slot.setRefreshInterval(10s);
    EXPECT_TRUE(slot.untilNextWake());
    event.window.event = SDL_WINDOWEVENT_MINIMIZED;
    view.handle(event);
    EXPECT_FALSE(slot.isActive());
    EXPECT_FALSE(slot.untilNextWake()) << "nothing is refreshed in the background";
    event.window.event = SDL_WINDOWEVENT_RESTORED;
    view.handle(event);
    EXPECT_TRUE(slot.isActive());
    EXPECT_EQ(slot.visibleFraction(), 1);
    view.setVisibleFraction(0.25);
    view.draw(kPlace);
    EXPECT_EQ(slot.visibleFraction(), 0.25);
}

// Each call of each operation destroys everything once, in whatever the library is doing then.
TEST_F(SdlTest, MayBeDestroyedFromInsideOfEveryOperation) {
    const Window window;
    const auto id = window.id();
    std::unique_ptr<AdSlot> slot;
    std::unique_ptr<VexmoraSdlView> view;
    std::unique_ptr<VexmoraSdlScreen> screen;
    AdSlot::Time now{};
    const auto send = [&](auto& presenter, SDL_WindowEventID what) {
        SDL_Event event{};
        event.type = SDL_WINDOWEVENT;
        event.window.windowID = id;
        event.window.event = what;
        presenter.handle(event);
    };
    const auto load = [&](const char* container, const char* size) {
        slot->setPlacement({.containerId = container, .adSize = size});
        EXPECT_TRUE(waitFor([&] { return !slot || slot->state() != AdSlot::State::loading; }));
    };
    const std::vector<std::function<void()>> life = {
        [&] { load("nothing", "320x60"); },
        [&] { view = std::make_unique<VexmoraSdlView>(window.renderer.get(), *slot); },
        [&] { load("home", "320x60"); },
        [&] { view->draw(kPlace); },
        [&] { view->handle(mouse(SDL_MOUSEBUTTONDOWN, 20, 30, id)); },
        [&] { view->handle(mouse(SDL_MOUSEBUTTONUP, 20, 30, id)); },
        [&] { send(*view, SDL_WINDOWEVENT_MINIMIZED); },
        [&] { send(*view, SDL_WINDOWEVENT_RESTORED); },
        [&] { view->setVisibleFraction(0); },
        [&] { view->setVisibleFraction(1); },
        [&] { now += 1s; },
        [&] { loop_->run(); },
        [&] { view.reset(); },
        [&] { screen = std::make_unique<VexmoraSdlScreen>(window.renderer.get(), *slot); },
        [&] { load("home", "300x250"); },
        [&] { EXPECT_TRUE(screen->present()); },
        [&] { screen->draw(0s); },
        [&] { screen->draw(1s); },
        [&] { send(*screen, SDL_WINDOWEVENT_MINIMIZED); },
        [&] { send(*screen, SDL_WINDOWEVENT_RESTORED); },
        [&] { screen->handle(key(SDLK_ESCAPE, id)); },
        [&] { screen->draw(2s); },
        [&] { screen->draw(3s); },
        [&] { loop_->run(); }};
    const auto destroy = [&] {
        view.reset();
        screen.reset();
        slot.reset();
    };

    int callsLeft = 0;
    const auto hear = [&](auto&&...) {
        if (--callsLeft == 0) destroy();
    };
    const std::vector<std::function<void(AdSlot::Delegate&)>> operations = {
        [&](auto& delegate) { delegate.willDismissScreen = hear; },
        [&](auto& delegate) { delegate.didDismissScreen = hear; },
        [&](auto& delegate) { delegate.willLeaveApplication = hear; },
        [&](auto& delegate) { delegate.didReceiveAd = hear; },
        [&](auto& delegate) { delegate.didHaveError = hear; },
        [&](auto& delegate) { delegate.stateChanged = hear; },
        [&](auto& delegate) { delegate.failed = hear; },
        [&](auto& delegate) { delegate.becameViewable = hear; },
        [&](auto& delegate) { delegate.nextWakeChanged = hear; }};
    for (std::size_t i = 0; i < operations.size(); ++i) {
        int call = 0;
        do {
            callsLeft = ++call;
            AdSlot::Delegate delegate;
            operations[i](delegate);
            slot = std::make_unique<AdSlot>(delegate);
            slot->setClock([&] { return now; });
            for (const auto& step : life) {
                if (slot) step();
            }
            destroy();
        } while (callsLeft <= 0);
        EXPECT_GT(call, 1) << "operation " << i << " was never called";
    }
    opener_.opened();
}

TEST_F(SdlTest, DoesNothingInUnchangedFrames) {
    const Window window;
    AdSlot slot(delegate());
    load(slot, "320x60");
    VexmoraSdlView view(window.renderer.get(), slot);
    VexmoraSdlScreen screen(window.renderer.get(), slot);
    const auto frame = [&](int number) {
        loop_->run();
        view.draw(kPlace);
        screen.draw(std::chrono::milliseconds(16 * number));
    };
    uploads = 0;
    frame(0);
    SDL_RenderFlush(window.renderer.get());
    frame(1);
    SDL_RenderFlush(window.renderer.get());
    countsAllocations = true;
    for (int i = 2; i < 100; ++i) {
        frame(i);
        SDL_RenderFlush(window.renderer.get());
    }
    countsAllocations = false;
    EXPECT_EQ(allocations, 0);
    EXPECT_EQ(uploads, 1) << "in the first frame";
    SDL_Event lost{};
    lost.type = SDL_RENDER_DEVICE_RESET;
    view.handle(lost);
    frame(100);
    EXPECT_EQ(uploads, 2);
}

class SdlScreenTest : public SdlTest {
 protected:
    SdlScreenTest() { load(slot_, "300x250"); }

    void draw(std::chrono::milliseconds now) {
        window_.clear();
        screen_.draw(now);
    }

    bool press(SDL_Keycode code) { return screen_.handle(key(code, window_.id())); }

    void click(int x, int y) {
        EXPECT_TRUE(screen_.handle(mouse(SDL_MOUSEBUTTONDOWN, x, y, window_.id())));
        EXPECT_TRUE(screen_.handle(mouse(SDL_MOUSEBUTTONUP, x, y, window_.id())));
    }

    void presentFully() {
        ASSERT_TRUE(screen_.present());
        draw(1s);
        draw(2s);
        ASSERT_TRUE(screen_.coversWindow());
    }

    Window window_;
    AdSlot slot_{delegate()};
    VexmoraSdlScreen screen_{window_.renderer.get(), slot_};
};

TEST_F(SdlScreenTest, MovesInAndOutByTheGivenTime) {
    EXPECT_FALSE(press(SDLK_ESCAPE)) << "it presents nothing";
    ASSERT_TRUE(screen_.present());
    EXPECT_FALSE(screen_.present());
    draw(1000ms);
    EXPECT_EQ(window_.colorAt(200, 299), kWhite);
    draw(1100ms);
    EXPECT_EQ(window_.colorAt(200, 10), kWhite);
    EXPECT_NE(window_.colorAt(200, 299), kWhite);
    EXPECT_THAT(slot_.visibleFraction(), testing::AllOf(testing::Gt(0.2), testing::Lt(0.9)));
    draw(1250ms);
    EXPECT_TRUE(screen_.coversWindow());
    EXPECT_EQ(window_.colorAt(60, 150), kRed);
    EXPECT_EQ(window_.colorAt(340, 150), kBlue);
    EXPECT_EQ(slot_.visibleFraction(), 1);

    EXPECT_TRUE(press(SDLK_ESCAPE));
    EXPECT_THAT(heard_, ElementsAre("will dismiss"));
    EXPECT_TRUE(press(SDLK_ESCAPE)) << "on its way";
    draw(5000ms);
    draw(5100ms);
    EXPECT_TRUE(screen_.isPresenting());
    EXPECT_EQ(window_.colorAt(200, 10), kWhite);
    draw(5250ms);
    EXPECT_FALSE(screen_.isPresenting());
    EXPECT_TRUE(waitFor([&] { return heard_.size() == 2; }));
    EXPECT_THAT(heard_, ElementsAre("will dismiss", "did dismiss"));
}

TEST_F(SdlScreenTest, IsClosedByItsButtonTheBackKeyAndAControllerAndByNothingElse) {
    const auto closes = [&](auto act) {
        heard_.clear();
        presentFully();
        act();
        const bool closed = !heard_.empty();
        if (!closed) press(SDLK_ESCAPE);
        draw(3s);
        draw(4s);
        EXPECT_FALSE(screen_.isPresenting());
        waitFor([&] { return heard_.size() == 2; });
        EXPECT_FALSE(screen_.present()) << "once is enough";
        slot_.reload();
        EXPECT_TRUE(waitFor([&] { return slot_.isPresentable(); }));
        return closed;
    };
    EXPECT_TRUE(closes([&] { click(400 - 30, 30); }));
    EXPECT_TRUE(closes([&] { press(SDLK_AC_BACK); }));
    EXPECT_TRUE(closes([&] {
        SDL_Event event{};
        event.type = SDL_CONTROLLERBUTTONDOWN;
        event.cbutton.button = SDL_CONTROLLER_BUTTON_B;
        screen_.handle(event);
    }));
    // A tap on the picture would stop the program.
    EXPECT_FALSE(closes([&] { click(200, 150); }));
    EXPECT_FALSE(closes([&] { press(SDLK_SPACE); }));
}

TEST_F(SdlScreenTest, FollowsTheWindowAndKeepsTheCloseButtonClearOfItsEdges) {
    screen_.setSafeAreaInsets({.top = 40, .right = 60});
    presentFully();
    click(400 - 30, 30);
    EXPECT_THAT(heard_, IsEmpty());
    SDL_SetWindowSize(window_.window.get(), 300, 400);
    SDL_PumpEvents();
    draw(3s);
    EXPECT_EQ(slot_.screenSize(), (platform::Size{300, 400}));
    EXPECT_EQ(window_.colorAt(10, 200), kRed);
    EXPECT_EQ(window_.colorAt(290, 200), kBlue);
    click(300 - 60 - 30, 40 + 30);
    EXPECT_THAT(heard_, ElementsAre("will dismiss"));
}

TEST_F(SdlScreenTest, RefusesOtherAdsThanInterstitials) {
    AdSlot banner(delegate());
    VexmoraSdlScreen screen(window_.renderer.get(), banner);
    EXPECT_FALSE(screen.present());
    load(banner, "320x60");
    EXPECT_FALSE(screen.present());
}

}  // namespace

int SDL_UpdateTexture(SDL_Texture* texture, const SDL_Rect* rect, const void* pixels, int pitch) {
    ++uploads;
    return nextOf(SDL_UpdateTexture, "SDL_UpdateTexture")(texture, rect, pixels, pitch);
}

int SDL_LockTexture(SDL_Texture* texture, const SDL_Rect* rect, void** pixels, int* pitch) {
    ++uploads;
    return nextOf(SDL_LockTexture, "SDL_LockTexture")(texture, rect, pixels, pitch);
}

// AddressSanitizer has operators of its own.
#ifndef __SANITIZE_ADDRESS__
// The two operators match, which the compiler does not see.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
    if (countsAllocations) ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
#endif
