// SPDX-License-Identifier: MIT
#include <thread>

#include "tests/App.h"
#include "tests/fake_platform/FakeMainQueue.h"

namespace VexmoraSDK {

struct App::Impl {};

App::App() {
    platform::FakeMainQueue::start();
}

// Like a toolkit's after its end, the queue stays and runs no more blocks.
App::~App() = default;

void App::runForAMoment() {
    platform::FakeMainQueue::drain();
    std::this_thread::yield();
}

}  // namespace VexmoraSDK
