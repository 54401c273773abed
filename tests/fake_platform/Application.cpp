// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Application.h"

#include "tests/fake_platform/FakeApplication.h"

namespace VexmoraSDK::platform {
namespace {

std::function<void(const Url&)>& currentOpener() {
    static auto& opener = *new std::function<void(const Url&)>([](const Url&) {});
    return opener;
}

}  // namespace

void Application::openUrl(const Url& url) {
    if (isAllowed(url)) currentOpener()(url);
}

void FakeApplication::setOpener(std::function<void(const Url&)> opener) {
    currentOpener() = std::move(opener);
}

}  // namespace VexmoraSDK::platform
