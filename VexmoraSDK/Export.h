// SPDX-License-Identifier: MIT
#pragma once

/// Marks what hosts and presenters may use of the library; all else is hidden in it.
#define VEXMORA_EXPORT __attribute__((visibility("default")))
