#pragma once

namespace VexmoraSDK::CountedTasks {

/// Whether the completions of all tasks that the library took from the session have run.
bool allAreThrough();

/// How many tasks completed again after they had completed.
int completedTwice();

}  // namespace VexmoraSDK::CountedTasks
