#include "VexmoraSDK/platform/http/NextDescriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
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
        struct stat status {};
        if (fstat(descriptor, &status) != 0) continue;
        if (S_ISSOCK(status.st_mode) || S_ISFIFO(status.st_mode))
            fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
}

}  // namespace VexmoraSDK::platform
