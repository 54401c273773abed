// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTemporaryDir>
#include <memory>

/// Replaces the desktop's `xdg-open`, by an entry at the front of PATH: it launches nothing and
/// reports the address instead.
class AddressRecorder : public QObject {
    Q_OBJECT

 public:
    AddressRecorder() = default;
    ~AddressRecorder() override;

    /// Returns false when the opener cannot be put in place.
    bool install();

 Q_SIGNALS:
    void opened(const QString& address);

 private:
    void read();

    QTemporaryDir folder_;
    int pipe_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
    QByteArray unread_;
};
