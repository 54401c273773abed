#include "demo/LocalAdServer.h"

#include <QFile>
#include <filesystem>
#include <string>
#include <utility>

#include "VexmoraSDK/platform/foundation/Bundle.h"
#include "VexmoraSDK/platform/foundation/PropertyList.h"

using VexmoraSDK::AdServer;
using VexmoraSDK::Catalog;
using VexmoraSDK::platform::Bundle;
using VexmoraSDK::platform::Data;
using VexmoraSDK::platform::Dictionary;
namespace PropertyList = VexmoraSDK::platform::PropertyList;

namespace {

bool write(const QString& path, const Dictionary& dictionary) {
    const Data list = PropertyList::binary(dictionary);
    const auto size = static_cast<qint64>(list.size());
    QFile file(path);
    return file.open(QFile::WriteOnly) &&
           file.write(reinterpret_cast<const char*>(list.data()), size) == size && file.flush();
}

}  // namespace

LocalAdServer::LocalAdServer(Catalog catalog)
    : server_(std::make_unique<AdServer>(std::move(catalog))) {}

std::unique_ptr<LocalAdServer> LocalAdServer::start(QString& error) {
    std::string mistake;
    std::optional<Catalog> catalog = Catalog::load(Catalog::defaultFile(), mistake);
    if (!catalog) {
        error = QStringLiteral("no ads to serve: ") + QString::fromStdString(mistake);
        return nullptr;
    }
    std::unique_ptr<LocalAdServer> self(new LocalAdServer(*std::move(catalog)));
    if (self->server_->port() == 0) {
        error = QStringLiteral("no port to serve ads from");
        return nullptr;
    }
    if (!self->writeSettings()) {
        error = QStringLiteral("cannot write the settings to ") + self->resources_.path();
        return nullptr;
    }
    Bundle::setLibraryFolder(QFile::encodeName(self->resources_.path()).toStdString());
    return self;
}

void LocalAdServer::stop() {
    server_.reset();
}

// The shipped resources, with settings of our own.
bool LocalAdServer::writeSettings() const {
    const std::filesystem::path folder = QFile::encodeName(resources_.path()).toStdString();
    std::error_code failure;
    std::filesystem::copy(Bundle::shippedLibraryFolder(), folder,
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::overwrite_existing,
                          failure);
    return resources_.isValid() && !failure &&
           write(resources_.filePath(QStringLiteral("Info.plist")),
                 {{"ConfigurationPlist", std::string("settings")}}) &&
           write(resources_.filePath(QStringLiteral("settings.plist")),
                 {{"requestUrlFormat", server_->requestUrlFormat()}});
}
