#include "Platform/Native/TLSServer.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

namespace quorvane::platform {
namespace {

template <class Type>
using Owned = std::unique_ptr<Type, void (*)(Type*)>;

Owned<X509> selfSigned(EVP_PKEY* key, const TLSServer::Certificate& wanted) {
    Owned<X509> certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -30L * 24 * 3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), static_cast<long>(wanted.days) * 24 * 3600);
    X509_set_pubkey(certificate.get(), key);
    X509_NAME* const name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>(wanted.name.c_str()),
                               -1, -1, 0);
    X509_set_issuer_name(certificate.get(), name);
    const std::string names = "DNS:" + wanted.name;
    const Owned<X509_EXTENSION> extension(X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, names.c_str()),
                                          &X509_EXTENSION_free);
    X509_add_ext(certificate.get(), extension.get(), -1);
    if (X509_sign(certificate.get(), key, EVP_sha256()) == 0) {
        std::abort();
    }
    return certificate;
}

} // namespace

struct TLSServer::State {
    Owned<EVP_PKEY> key{EVP_EC_gen("P-256"), &EVP_PKEY_free};
    Owned<X509> certificate{nullptr, &X509_free};
    Owned<SSL_CTX> context{SSL_CTX_new(TLS_server_method()), &SSL_CTX_free};
    int listener = -1;
    int stopPipe[2] = {-1, -1};
    std::uint16_t port = 0;
    std::atomic<int> requests = 0;
    std::thread thread;

    /// One connection after the other.
    void serve() {
        for (;;) {
            pollfd files[] = {{listener, POLLIN, 0}, {stopPipe[0], POLLIN, 0}};
            poll(files, 2, -1);
            if ((files[1].revents & POLLIN) != 0) {
                return;
            }
            const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
            const Owned<SSL> session(SSL_new(context.get()), &SSL_free);
            SSL_set_fd(session.get(), connection);
            char bytes[4096];
            if (SSL_accept(session.get()) == 1 && SSL_read(session.get(), bytes, sizeof bytes) > 0) {
                ++requests;
                const std::string answer = testing::RawServer::answer(200, "secret", {{"Connection", "close"}});
                SSL_write(session.get(), answer.data(), static_cast<int>(answer.size()));
                SSL_shutdown(session.get());
            }
            close(connection);
        }
    }
};

TLSServer::TLSServer(const Certificate& certificate) : state(std::make_unique<State>()) {
    state->certificate = selfSigned(state->key.get(), certificate);
    SSL_CTX_use_certificate(state->context.get(), state->certificate.get());
    SSL_CTX_use_PrivateKey(state->context.get(), state->key.get());
    state->listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (pipe(state->stopPipe) != 0 || bind(state->listener, generic, length) != 0 || listen(state->listener, 8) != 0 ||
        getsockname(state->listener, generic, &length) != 0) {
        std::abort();
    }
    state->port = ntohs(address.sin_port);
    state->thread = std::thread([this] {
        sigset_t pipeSignal;
        sigemptyset(&pipeSignal);
        sigaddset(&pipeSignal, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipeSignal, nullptr);
        state->serve();
    });
}

TLSServer::~TLSServer() {
    const char byte = 0;
    static_cast<void>(!write(state->stopPipe[1], &byte, 1));
    state->thread.join();
    for (const int file : {state->listener, state->stopPipe[0], state->stopPipe[1]}) {
        close(file);
    }
}

std::uint16_t TLSServer::port() const {
    return state->port;
}

std::string TLSServer::authority() const {
    const std::unique_ptr<BIO, int (*)(BIO*)> memory(BIO_new(BIO_s_mem()), &BIO_free);
    PEM_write_bio_X509(memory.get(), state->certificate.get());
    char* text = nullptr;
    const long length = BIO_get_mem_data(memory.get(), &text);
    return {text, static_cast<std::size_t>(length)};
}

int TLSServer::requests() const {
    return state->requests;
}

} // namespace quorvane::platform
