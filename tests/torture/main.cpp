#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/torture/Torture.h"

/// `--step=N` lets one of N calls fail instead of each.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    constexpr std::string_view kStep = "--step=";
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.starts_with(kStep)) {
            VexmoraSDK::Torture::step = std::atol(argv[i] + kStep.size());
        }
    }
    return RUN_ALL_TESTS();
}
