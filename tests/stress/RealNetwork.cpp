#include "adserver/AdServer.h"
#include "tests/stress/Network.h"

namespace VexmoraSDK {

struct Network::Impl {
    static Catalog catalog() {
        std::string error;
        return Catalog::load(VEXMORA_CATALOG, error).value();
    }

    AdServer server{catalog()};
};

Network::Network() : impl_(std::make_unique<Impl>()) {}

Network::~Network() = default;

std::string Network::requestUrlFormat() const {
    return impl_->server.requestUrlFormat();
}

void Network::serve(const std::string&, int) {}

}  // namespace VexmoraSDK
