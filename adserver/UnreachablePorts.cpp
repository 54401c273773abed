// SPDX-License-Identifier: MIT
#include "adserver/UnreachablePorts.h"

#include <arpa/inet.h>
#include <httplib.h>
#include <openssl/evp.h>
#include <openssl/x509.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <thread>

namespace VexmoraSDK {
namespace {

std::string addressOf(int port) {
    return "127.0.0.1:" + std::to_string(port);
}

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

Certificate certificateOf(EVP_PKEY* key) {
    constexpr long kDay = 86'400;
    Certificate certificate(X509_new(), X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kDay);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), kDay);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>("127.0.0.1"), -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

}  // namespace

/// A listening port whose connections nobody accepts.
class UnreachablePorts::Listener {
 public:
    explicit Listener(int backlog) {
        socklen_t size = sizeof address_;
        if (bind(socket_, any(), size) != 0 || listen(socket_, backlog) != 0 ||
            getsockname(socket_, any(), &size) != 0) {
            throw std::runtime_error("no port is free");
        }
    }

    ~Listener() {
        close(socket_);
        for (const int client : clients_)
            close(client);
    }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Fills the queue of connections that wait to be accepted, so that no further one gets in.
    void fill() {
        for (int& client : clients_) {
            client = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            // The connection is complete at once, or never.
            static_cast<void>(connect(client, any(), sizeof address_));
        }
    }

    std::string address() const { return addressOf(ntohs(address_.sin_port)); }

 private:
    sockaddr* any() { return reinterpret_cast<sockaddr*>(&address_); }

    const int socket_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address_{
        .sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
    std::array<int, 4> clients_{-1, -1, -1, -1};
};

class UnreachablePorts::TlsServer {
 public:
    TlsServer() : thread_([this] { server_.listen_after_bind(); }) {
        // A server that does not run yet ignores `stop`.
        while (port_ > 0 && !server_.is_running())
            std::this_thread::yield();
    }

    ~TlsServer() {
        server_.stop();
        thread_.join();
    }

    std::string address() const { return addressOf(port_); }

 private:
    Key key_{EVP_EC_gen("P-256"), EVP_PKEY_free};
    Certificate certificate_ = certificateOf(key_.get());
    httplib::SSLServer server_{certificate_.get(), key_.get()};
    const int port_ = server_.bind_to_any_port("127.0.0.1");
    std::thread thread_;
};

UnreachablePorts::UnreachablePorts() = default;

UnreachablePorts::~UnreachablePorts() = default;

std::string UnreachablePorts::full() {
    const std::lock_guard lock(mutex_);
    if (!full_) {
        full_ = std::make_unique<Listener>(0);
        full_->fill();
    }
    return full_->address();
}

std::string UnreachablePorts::silent() {
    const std::lock_guard lock(mutex_);
    if (!silent_) silent_ = std::make_unique<Listener>(SOMAXCONN);
    return silent_->address();
}

std::string UnreachablePorts::selfSigned() {
    const std::lock_guard lock(mutex_);
    if (!selfSigned_) selfSigned_ = std::make_unique<TlsServer>();
    return selfSigned_->address();
}

}  // namespace VexmoraSDK
