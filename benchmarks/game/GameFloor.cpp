// SPDX-License-Identifier: MIT
#include "benchmarks/game/GameFloor.h"

#include <curl/curl.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <boost/json.hpp>
#include <cmath>
#include <utility>

namespace VexmoraSDK::benchmarks {

struct GameFloor::Job {
    std::string address;
    Done done;
    Ad ad;
    bool isPicture = false;
    std::string body{};
};

namespace {

std::size_t append(const char* bytes, std::size_t, std::size_t count, void* job) {
    static_cast<GameFloor::Job*>(job)->body.append(bytes, count);
    return count;
}

std::string text(const boost::json::object& ad, std::string_view name) {
    const auto* member = ad.if_contains(name);
    return member ? std::string(member->as_string()) : std::string();
}

}  // namespace

void GameFloor::Jobs::add(JobPointer job) {
    const std::lock_guard lock(mutex);
    waiting.push_back(std::move(job));
    changed.notify_one();
}

GameFloor::JobPointer GameFloor::Jobs::take() {
    const std::lock_guard lock(mutex);
    if (waiting.empty()) return nullptr;
    auto job = std::move(waiting.front());
    waiting.pop_front();
    return job;
}

GameFloor::GameFloor(std::function<void()> wakeUp)
    : wakeUp_(std::move(wakeUp)), multi_(curl_multi_init()), io_([this] { transfer(); }) {
    for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
        workers_.emplace_back([this] { decode(); });
}

GameFloor::~GameFloor() {
    for (auto* jobs : {&requests_, &pictures_}) {
        const std::lock_guard lock(jobs->mutex);
        jobs->stopped = true;
        jobs->changed.notify_all();
    }
    curl_multi_wakeup(multi_);
    io_.join();
    for (auto& worker : workers_)
        worker.join();
    for (auto* handle : idleHandles_)
        curl_easy_cleanup(handle);
    curl_multi_cleanup(multi_);
}

void GameFloor::fetch(std::string address, Done done) {
    request(std::make_unique<Job>(Job{std::move(address), std::move(done), {}}));
}

void GameFloor::request(JobPointer job) {
    requests_.add(std::move(job));
    curl_multi_wakeup(multi_);
}

void GameFloor::transfer() {
    while (true) {
        {
            const std::lock_guard lock(requests_.mutex);
            if (requests_.stopped) return;
        }
        while (auto job = requests_.take())
            begin(std::move(job));
        int running = 0;
        curl_multi_perform(multi_, &running);
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
            CURL* handle = message->easy_handle;
            Job* done = nullptr;
            curl_easy_getinfo(handle, CURLINFO_PRIVATE, &done);
            curl_multi_remove_handle(multi_, handle);
            idleHandles_.push_back(handle);
            JobPointer job(done);
            if (job->isPicture) {
                pictures_.add(std::move(job));
            } else {
                handOver(std::move(job));
            }
        }
        curl_multi_poll(multi_, nullptr, 0, 60'000, nullptr);
    }
}

void GameFloor::begin(JobPointer job) {
    CURL* handle = nullptr;
    if (idleHandles_.empty()) {
        handle = curl_easy_init();
        curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
        curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
        curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, append);
    } else {
        handle = idleHandles_.back();
        idleHandles_.pop_back();
    }
    curl_easy_setopt(handle, CURLOPT_URL, job->address.c_str());
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, job.get());
    curl_easy_setopt(handle, CURLOPT_PRIVATE, job.release());
    curl_multi_add_handle(multi_, handle);
}

void GameFloor::decode() {
    std::unique_lock lock(pictures_.mutex);
    while (true) {
        pictures_.changed.wait(lock,
                               [&] { return pictures_.stopped || !pictures_.waiting.empty(); });
        if (pictures_.stopped) return;
        auto job = std::move(pictures_.waiting.front());
        pictures_.waiting.pop_front();
        lock.unlock();
        job->ad.picture = platform::Image::fromData(platform::dataOf(job->body));
        handOver(std::move(job));
        lock.lock();
    }
}

void GameFloor::handOver(JobPointer job) {
    results_.add(std::move(job));
    wakeUp_();
}

void GameFloor::run() {
    while (auto job = results_.take())
        finish(std::move(job));
}

void GameFloor::finish(JobPointer job) {
    if (job->isPicture) return job->done(std::move(job->ad));
    const auto answer = boost::json::parse(job->body);
    const auto& ad = answer.as_array().front().as_object();
    job->ad = {text(ad, "title"), text(ad, "description"), text(ad, "displayName"), nullptr};
    job->address = text(ad, "bannerUrl");
    job->isPicture = true;
    job->body.clear();
    request(std::move(job));
}

namespace {

constexpr int kPictureWidth = 132;
constexpr int kPictureHeight = 99;
constexpr double kTextLeft = 140;
constexpr int kTextWidth = 178;

PangoContext* context() {
    static PangoContext* const context = [] {
        PangoContext* made = pango_font_map_create_context(pango_cairo_font_map_get_default());
        pango_context_set_round_glyph_positions(made, FALSE);
        return made;
    }();
    return context;
}

/// Places a text at the height `y` and adds its own to it.
PangoLayout* layOut(const std::string& text, const char* font, double& y) {
    PangoLayout* layout = pango_layout_new(context());
    PangoFontDescription* description = pango_font_description_from_string(font);
    pango_layout_set_font_description(layout, description);
    pango_font_description_free(description);
    pango_layout_set_width(layout, kTextWidth * PANGO_SCALE);
    pango_layout_set_text(layout, text.data(), static_cast<int>(text.size()));
    int height = 0;
    pango_layout_get_pixel_size(layout, nullptr, &height);
    y += height;
    return layout;
}

void paintPicture(cairo_t* cairo, const platform::Image& image, double x, double y, double width) {
    auto* pixels = const_cast<std::uint32_t*>(image.pixels());
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels), CAIRO_FORMAT_ARGB32, image.width(),
        image.height(), image.bytesPerRow());
    const double scale = width / image.width();
    cairo_save(cairo);
    cairo_translate(cairo, x, y);
    cairo_scale(cairo, scale, scale);
    cairo_set_source_surface(cairo, surface, 0, 0);
    cairo_paint(cairo);
    cairo_restore(cairo);
    cairo_surface_destroy(surface);
}

}  // namespace

GameFloorAd::GameFloorAd(SDL_Renderer* renderer, Kind kind, const GameFloor::Ad& ad)
    : width_(ad.picture->width()), height_(ad.picture->height()) {
    struct Text {
        PangoLayout* layout;
        double y;
    };
    std::vector<Text> texts;
    double y = 0;
    const auto add = [&](const std::string& text, const char* font) {
        const double top = y;
        texts.push_back({layOut(text, font, y), top});
    };
    if (kind == Kind::interstitial) {
        width_ = 360;
        height_ = 640;
        add("\u00d7", "Nimbus Sans 26px");
    } else if (kind == Kind::native) {
        add(ad.title, "Nimbus Sans Bold 13px");
        add(ad.description, "Nimbus Sans 12px");
        add(ad.displayName, "Nimbus Sans 12px");
        width_ = static_cast<int>(kTextLeft) + kTextWidth;
        height_ = std::max(kPictureHeight, static_cast<int>(std::ceil(y)));
    }

    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width_ * height_));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                            CAIRO_FORMAT_ARGB32, width_, height_, 4 * width_);
    cairo_t* cairo = cairo_create(surface);
    if (kind == Kind::interstitial) {
        cairo_set_source_rgb(cairo, 0.07, 0.08, 0.1);
        cairo_paint(cairo);
        paintPicture(cairo, *ad.picture, (width_ - 300) / 2.0, (height_ - 250) / 2.0, 300);
        cairo_set_source_rgb(cairo, 1, 1, 1);
    } else {
        paintPicture(cairo, *ad.picture, 0, 0,
                     kind == Kind::native ? kPictureWidth : ad.picture->width());
        cairo_set_source_rgb(cairo, 0, 0, 0);
    }
    for (const auto& [layout, top] : texts) {
        cairo_move_to(cairo, kind == Kind::native ? kTextLeft : width_ - 38, top);
        pango_cairo_show_layout(cairo, layout);
        g_object_unref(layout);
    }
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    texture_ = SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STATIC,
                                 width_, height_);
    SDL_UpdateTexture(texture_, nullptr, pixels.data(), 4 * width_);
}

void GameFloorAd::draw(SDL_Renderer* renderer) const {
    const SDL_Rect target = {0, 0, width_, height_};
    SDL_RenderCopy(renderer, texture_, nullptr, &target);
}

}  // namespace VexmoraSDK::benchmarks
