#include "tests/linux/network/SelfSignedServer.h"

#include <openssl/evp.h>
#include <openssl/x509v3.h>

#include <chrono>
#include <stdexcept>

namespace vantrel::linuxdesktop {

namespace {

struct PrivateKeyDeleter {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
};
struct CertificateDeleter {
    void operator()(X509* certificate) const { X509_free(certificate); }
};
struct ExtensionDeleter {
    void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
};
using PrivateKey = std::unique_ptr<EVP_PKEY, PrivateKeyDeleter>;
using Certificate = std::unique_ptr<X509, CertificateDeleter>;
using Extension = std::unique_ptr<X509_EXTENSION, ExtensionDeleter>;

Certificate selfSigned(EVP_PKEY* key) {
    constexpr long day = 24 * 60 * 60;
    constexpr long version3 = 2;
    Certificate made(X509_new());
    X509* const certificate = made.get();
    X509_set_version(certificate, version3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -day);
    X509_gmtime_adj(X509_getm_notAfter(certificate), day);
    X509_set_pubkey(certificate, key);
    X509_NAME* const name = X509_get_subject_name(certificate);
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("127.0.0.1"), -1, -1,
                               0);
    X509_set_issuer_name(certificate, name);
    const Extension address(X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, "IP:127.0.0.1"));
    X509_add_ext(certificate, address.get(), -1);
    if (X509_sign(certificate, key, EVP_sha256()) == 0) throw std::runtime_error("the certificate is not signed");
    return made;
}

}  // namespace

SelfSignedServer::SelfSignedServer() {
    const PrivateKey key(EVP_EC_gen("P-256"));
    const Certificate certificate = selfSigned(key.get());
    server_ = std::make_unique<httplib::SSLServer>(certificate.get(), key.get());
    server_->Get(".*", [this](const httplib::Request&, httplib::Response& response) {
        ++requests_;
        response.set_content("secret", "text/plain");
    });
    port_ = server_->bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

SelfSignedServer::~SelfSignedServer() {
    server_->stop();
    thread_.join();
}

}  // namespace vantrel::linuxdesktop
