// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtGui/QImage>

#include "benchmarks/Floor.h"

namespace VexmoraSDK::benchmarks {

/// The floor of an app on Qt: `QImageReader`, and one event for each task of the main thread.
class QtFloor {
 public:
    using Ad = Floor<QImage>::Ad;

    QtFloor();

    /// See `Floor`. Requests that are unfinished when this is destroyed never finish.
    void fetch(std::string address, Floor<QImage>::Done done);

 private:
    QObject receiver_;
    Floor<QImage> floor_;
};

}  // namespace VexmoraSDK::benchmarks
