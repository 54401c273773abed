#pragma once

/// The main queue of the tests: its blocks run when the test says so.
namespace VexmoraSDK::platform::FakeMainQueue {

/// The calling thread is the main thread from now on, with nothing queued.
void start();
/// There is no main queue from now on; what was queued is dropped.
void stop();
/// Runs what is queued, and what that queues, until nothing is left. Main thread.
void drain() noexcept;

}  // namespace VexmoraSDK::platform::FakeMainQueue
