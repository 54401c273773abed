// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/Bundle.h"

#include <dlfcn.h>

#include <mutex>
#include <utility>

#include "VexmoraSDK/platform/foundation/NoDestructor.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"

namespace VexmoraSDK::platform {
namespace {

namespace fs = std::filesystem;

constexpr const char* kInfoFile = "Info.plist";

struct HostFolder {
    std::mutex mutex;
    fs::path folder;

    static HostFolder& shared() {
        static NoDestructor<HostFolder> folder;
        return *folder;
    }
};

/// The folder of the shared library, or of the executable, that this code is in.
fs::path folderOfThisCode() {
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&folderOfThisCode), &info) || !info.dli_fname) {
        return {};
    }
    std::error_code ignored;
    return fs::canonical(info.dli_fname, ignored).parent_path();
}

fs::path folderOfTheExecutable() {
    std::error_code ignored;
    return fs::canonical("/proc/self/exe", ignored).parent_path();
}

/// `share/VexmoraSDK` in `folder` or one of those above it: `lib` and `bin` lie directly in an
/// installation prefix, `lib/<architecture>` and plugin folders deeper.
std::optional<fs::path> sharedFolderNear(fs::path folder) {
    for (int levels = 0; levels < 5 && folder.has_relative_path(); ++levels) {
        std::error_code ignored;
        auto candidate = folder / "share" / "VexmoraSDK";
        if (fs::exists(candidate / kInfoFile, ignored)) return candidate;
        folder = folder.parent_path();
    }
    return std::nullopt;
}

fs::path libraryFolder() {
    auto& host = HostFolder::shared();
    const std::lock_guard lock(host.mutex);
    return host.folder.empty() ? Bundle::shippedLibraryFolder() : host.folder;
}

}  // namespace

Bundle::Bundle(fs::path folder) : folder_(std::move(folder)) {
    // An empty path must not mean the working directory.
    if (folder_.empty()) return;
    info_ = PropertyList::dictionaryWithContentsOfFile(folder_ / kInfoFile).value_or(Dictionary());
}

const Bundle& Bundle::library() noexcept {
    static const NoDestructor<Bundle> bundle(libraryFolder());
    return *bundle;
}

void Bundle::setLibraryFolder(fs::path folder) noexcept {
    std::error_code failure;
    auto absolute = folder.empty() ? folder : fs::absolute(folder, failure);
    auto& host = HostFolder::shared();
    const std::lock_guard lock(host.mutex);
    host.folder = failure ? std::move(folder) : std::move(absolute);
}

fs::path Bundle::shippedLibraryFolder() noexcept {
    for (const auto& start : {folderOfThisCode(), folderOfTheExecutable()}) {
        if (auto found = sharedFolderNear(start)) return *found;
    }
    return {};
}

const Value* Bundle::objectForInfoDictionaryKey(std::string_view key) const {
    const auto found = info_.find(key);
    return found == info_.end() ? nullptr : &found->second;
}

std::optional<fs::path> Bundle::pathForResource(std::string_view name,
                                                std::string_view type) const {
    if (folder_.empty()) return std::nullopt;
    fs::path file = folder_ / name;
    file += '.';
    file += type;
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored)) return std::nullopt;
    return file;
}

}  // namespace VexmoraSDK::platform
