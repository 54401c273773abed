// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/foundation/FatalContext.h"

#include <cstdio>

namespace VexmoraSDK::platform {
namespace {

constexpr std::size_t kMaxName = 400;

thread_local const FatalContext* innermost = nullptr;

void write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void writeName(std::string_view name) {
    write(" \"");
    for (const char character : name.substr(0, kMaxName)) {
        const bool isControl = static_cast<unsigned char>(character) < ' ' || character == '\x7f';
        std::fputc(isControl ? '?' : character, stderr);
    }
    write(name.size() > kMaxName ? "…\"" : "\"");
}

}  // namespace

FatalContext::FatalContext(std::string_view what, std::string_view name) noexcept
    : what_(what), name_(name), outer_(innermost) {
    innermost = this;
}

FatalContext::~FatalContext() {
    innermost = outer_;
}

void FatalContext::print() noexcept {
    const char* before = "  where: ";
    for (const FatalContext* context = innermost; context; context = context->outer_) {
        if (context->what_.empty()) continue;
        write(before);
        before = ", ";
        write(context->what_);
        if (context->name_.data()) writeName(context->name_);
    }
    if (*before == ',') write("\n");
}

}  // namespace VexmoraSDK::platform
