// SPDX-License-Identifier: MIT
#include "benchmarks/QtFloor.h"

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>
#include <utility>

namespace VexmoraSDK::benchmarks {
namespace {

QImage decode(const std::string& bytes) {
    QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&data);
    return QImageReader(&buffer).read();
}

}  // namespace

QtFloor::QtFloor()
    : floor_(decode, [this](std::function<void()> task) {
          QMetaObject::invokeMethod(&receiver_, std::move(task), Qt::QueuedConnection);
      }) {}

void QtFloor::fetch(std::string address, Floor<QImage>::Done done) {
    floor_.fetch(std::move(address), std::move(done));
}

}  // namespace VexmoraSDK::benchmarks
