// SPDX-License-Identifier: MIT
#include "demo/AddressRecorder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <array>

AddressRecorder::~AddressRecorder() {
    notifier_.reset();
    if (pipe_ >= 0) ::close(pipe_);
}

bool AddressRecorder::install() {
    const QByteArray pipe = QFile::encodeName(folder_.filePath(QStringLiteral("addresses")));
    if (!folder_.isValid() || ::mkfifo(pipe.constData(), 0600) != 0) return false;
    // Open for writing too, so that the pipe does not end with the first writer.
    pipe_ = ::open(pipe.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (pipe_ < 0) return false;
    notifier_ = std::make_unique<QSocketNotifier>(pipe_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &AddressRecorder::read);

    QFile opener(folder_.filePath(QStringLiteral("xdg-open")));
    const QByteArray script = "#!/bin/sh\nprintf '%s\\n' \"$1\" > '" + pipe + "'\n";
    return opener.open(QFile::WriteOnly) && opener.write(script) == script.size() &&
           opener.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
           qputenv("PATH", QFile::encodeName(folder_.path()) + ':' + qgetenv("PATH"));
}

void AddressRecorder::read() {
    std::array<char, 4096> buffer;
    const ssize_t count = ::read(pipe_, buffer.data(), buffer.size());
    if (count > 0) unread_.append(buffer.data(), count);
    for (qsizetype end; (end = unread_.indexOf('\n')) >= 0;) {
        const QString address = QString::fromUtf8(unread_.left(end));
        unread_.remove(0, end + 1);
        Q_EMIT opened(address);
    }
}
