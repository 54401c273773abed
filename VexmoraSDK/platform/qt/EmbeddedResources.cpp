// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/qt/EmbeddedResources.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include "VexmoraSDK/platform/foundation/Bundle.h"

namespace VexmoraSDK::platform {
namespace {

constexpr QLatin1String kEmbedded(":/VexmoraSDK");

// The file is always rewritten: another version of the app may have written it.
bool writeOut(const QString& embedded, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile::remove(path);
    return QFile::copy(embedded, path) &&
           QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

}  // namespace

bool useEmbeddedResources() {
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                      QLatin1String("/VexmoraSDK"));
    bool any = false;
    QDirIterator files(kEmbedded, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString embedded = files.next();
        if (!writeOut(embedded, folder.filePath(embedded.mid(kEmbedded.size() + 1)))) return false;
        any = true;
    }
    if (any) Bundle::setLibraryFolder(QFile::encodeName(folder.path()).toStdString());
    return any;
}

}  // namespace VexmoraSDK::platform
