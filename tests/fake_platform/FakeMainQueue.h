// SPDX-License-Identifier: MIT
#pragma once

/// The main queue of the unit tests: its blocks run when the test drains it.
namespace VexmoraSDK::platform::FakeMainQueue {

/// Makes the calling thread the main thread and empties the queue.
void start();
/// Drops all blocks; from now on there is no main queue.
void stop();
/// Runs blocks until the queue is empty, those that blocks add included. Main thread.
void drain() noexcept;

}  // namespace VexmoraSDK::platform::FakeMainQueue
