// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/Application.h"

#include <QtCore/QtGlobal>
#include <string>

#if defined(Q_OS_LINUX) && !defined(Q_OS_ANDROID)
#include <QtCore/QProcess>
#else
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#endif

namespace VexmoraSDK::platform {
namespace {

#if defined(Q_OS_LINUX) && !defined(Q_OS_ANDROID)
// The opener gets the text itself, because a QUrl rewrites some escapes.
void open(const std::string& address) {
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({QString::fromStdString(address)});
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    opener.startDetached();
}
#else
void open(const std::string& address) {
    QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
}
#endif

}  // namespace

void Application::openUrl(const Url& url) {
    if (isAllowed(url)) open(url.text());
}

}  // namespace VexmoraSDK::platform
