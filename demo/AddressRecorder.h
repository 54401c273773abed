#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTemporaryDir>
#include <memory>

/// Stands in for the desktop's opener of addresses: an `xdg-open` that is found before all others
/// and launches nothing, but tells the address.
class AddressRecorder : public QObject {
    Q_OBJECT

 public:
    AddressRecorder() = default;
    ~AddressRecorder() override;

    /// False when the opener cannot be put in place.
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
