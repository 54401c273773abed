// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// The order in which everything ends when the process exits, on any thread:
///
/// 1. The session: no byte is moved and no completion begins any more. Completions that run are
///    given a second to return.
/// 2. The main queue: no block begins any more. One that the main thread is in the midst of is
///    given a second, unless the process exits on that thread.
/// 3. What TLS and the toolkit have built for good. Their exit handlers are registered before ours,
///    and such handlers run in the reverse order.
///
/// A thread that takes longer is left behind: nobody knows how long a host's callback waits. So
/// nothing else of the library is ever destroyed (`NoDestructor`), and threads find it whole until
/// the process is gone. A forked child has none of the threads, and ends nothing.
///
/// Registers the handler that does all this. Called once, after TLS was set up and before the
/// session has its first thread.
void prepareProcessExit();

}  // namespace VexmoraSDK::platform
