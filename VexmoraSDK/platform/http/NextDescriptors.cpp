// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/http/NextDescriptors.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace VexmoraSDK::platform {

NextDescriptors::NextDescriptors() {
    for (int& descriptor : descriptors_)
        descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    for (const int descriptor : descriptors_)
        if (descriptor >= 0) close(descriptor);
}

void NextDescriptors::closeOnExec() const {
    for (const int descriptor : descriptors_) {
        int domain = 0;
        socklen_t size = sizeof domain;
        if (getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 && domain == AF_UNIX)
            fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
}

}  // namespace VexmoraSDK::platform
