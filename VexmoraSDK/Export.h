// SPDX-License-Identifier: MIT
#pragma once

/// Exports a symbol to hosts and presenters. All other symbols are hidden.
#define VEXMORA_EXPORT __attribute__((visibility("default")))
