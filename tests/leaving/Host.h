#pragma once

#include <memory>

namespace VexmoraSDK {

/// An app's user interface, on the thread that makes it.
class Host {
 public:
    Host();
    ~Host();

    /// Runs the user interface until something in it quits.
    void run();
    void quit();

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace VexmoraSDK
