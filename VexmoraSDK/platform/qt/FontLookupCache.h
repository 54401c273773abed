// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <map>
#include <mutex>
#include <utility>

namespace VexmoraSDK::platform {

/// Caches look-ups in Qt's font database until fonts are added or removed: a look-up takes longer
/// than drawing an ad. Any thread.
template <class Key, class Result>
class FontLookupCache {
 public:
    /// The cached result for `key`, or else that of `lookUp`.
    template <class LookUp>
    Result find(const Key& key, LookUp lookUp) {
        std::unique_lock lock(mutex_);
        watchApplication();
        if (const auto known = results_.find(key); known != results_.end()) return known->second;
        const int changes = changes_;
        // The database signals changes while it holds its own lock.
        lock.unlock();
        Result result = lookUp();
        lock.lock();
        if (changes == changes_ && results_.size() < kMaxEntries) results_.emplace(key, result);
        return result;
    }

 private:
    /// More fonts than an app uses.
    static constexpr std::size_t kMaxEntries = 256;

    void watchApplication() {
        auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
        if (!application || application_ == application) return;
        application_ = application;
        results_.clear();
        QObject::connect(application, &QGuiApplication::fontDatabaseChanged, [this] {
            const std::lock_guard lock(mutex_);
            results_.clear();
            ++changes_;
        });
    }

    std::mutex mutex_;
    QPointer<QGuiApplication> application_;
    std::map<Key, Result> results_;
    int changes_ = 0;
};

}  // namespace VexmoraSDK::platform
