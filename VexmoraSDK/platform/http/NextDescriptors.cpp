// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/NextDescriptors.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace VexmoraSDK::platform {
namespace {

bool isLocalSocket(int descriptor) {
    int domain = 0;
    socklen_t size = sizeof domain;
    return getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 && domain == AF_UNIX;
}

}  // namespace

NextDescriptors::NextDescriptors() {
    descriptors_.fill(-1);
    int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (next < 0) return;
    close(next);
    // Lower ones may become free meanwhile.
    next = std::max(0, next - static_cast<int>(descriptors_.size() / 2));
    for (int& descriptor : descriptors_) {
        if (!isLocalSocket(next)) descriptor = next;
        ++next;
    }
}

void NextDescriptors::closeOnExec() const {
    for (const int descriptor : descriptors_)
        if (isLocalSocket(descriptor)) fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

}  // namespace VexmoraSDK::platform
