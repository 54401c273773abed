#include <thread>

#include "tests/fake_platform/FakeMainQueue.h"
#include "tests/leaving/Host.h"

namespace VexmoraSDK {

struct Host::Impl {
    bool quits = false;
};

Host::Host() : impl_(std::make_unique<Impl>()) {
    platform::FakeMainQueue::start();
}

// The queue stays, as it does when a toolkit has ended, and runs no more blocks.
Host::~Host() = default;

void Host::run() {
    while (!impl_->quits) {
        platform::FakeMainQueue::drain();
        std::this_thread::yield();
    }
}

void Host::quit() {
    impl_->quits = true;
}

}  // namespace VexmoraSDK
