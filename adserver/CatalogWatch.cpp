// SPDX-License-Identifier: MIT
#include "adserver/CatalogWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <string_view>
#include <utility>

namespace VexmoraSDK {
namespace {

constexpr std::uint32_t kChanges = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;

}  // namespace

CatalogWatch::CatalogWatch(std::filesystem::path file)
    : file_(std::move(file)),
      pictures_(file_.parent_path() / "pictures"),
      descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    watchFolders();
}

CatalogWatch::~CatalogWatch() {
    if (descriptor_ >= 0) close(descriptor_);
}

void CatalogWatch::watchFolders() {
    // Creation matters for folders only: a new file is written afterwards.
    inotify_add_watch(descriptor_, file_.parent_path().c_str(), kChanges | IN_CREATE);
    picturesWatch_ = inotify_add_watch(descriptor_, pictures_.c_str(), kChanges);
}

bool CatalogWatch::changed() {
    bool found = false;
    alignas(inotify_event) std::array<char, 4096> buffer;
    for (ssize_t size; (size = read(descriptor_, buffer.data(), buffer.size())) > 0;) {
        for (const char* at = buffer.data(); at < buffer.data() + size;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(at);
            at += sizeof(inotify_event) + event->len;
            const std::string_view name = event->len > 0 ? event->name : "";
            const bool written = (event->mask & kChanges) != 0;
            found = found || event->wd == picturesWatch_ || name == "pictures" ||
                    (written && name == file_.filename().native());
        }
    }
    if (found) watchFolders();
    return found;
}

}  // namespace VexmoraSDK
