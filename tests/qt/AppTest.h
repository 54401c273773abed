#pragma once

#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/App.h"

namespace VexmoraSDK {

/// A test of an application, and what it heard. All tests of a process share one application: only
/// the first of a process is accessible and animates.
class AppTest : public testing::Test {
 protected:
    AppTest() {
        if (!QCoreApplication::instance()) App::startForGood();
    }

    void hear(const std::string& what) { heard_.push_back(what); }

    bool waitToHear(const std::string& what) {
        return App::waitFor([&] { return std::ranges::find(heard_, what) != heard_.end(); });
    }

    /// What was heard since the last call.
    std::vector<std::string> heard() { return std::exchange(heard_, {}); }

 private:
    std::vector<std::string> heard_;
};

}  // namespace VexmoraSDK
