// People will trust the authority on their machines: it must not be able to sign for anything else.
#include "server/authority.h"

#include <gtest/gtest.h>

#include "server/openssl_handles.h"

namespace quorvantis::server {
namespace {

openssl::Certificate read(const std::string& pem) {
  const openssl::Bio memory(BIO_new_mem_buf(pem.data(), static_cast<int>(pem.size())));
  return openssl::Certificate(PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr));
}

/// Whether a client that trusts the authority accepts the certificate for the host.
bool isTaken(const Authority& authority, const std::string& certificate, const std::string& host) {
  const base::CHandle<X509_STORE, X509_STORE_free> trusted(X509_STORE_new());
  X509_STORE_add_cert(trusted.get(), read(authority.certificate()).get());
  const base::CHandle<X509_STORE_CTX, X509_STORE_CTX_free> check(X509_STORE_CTX_new());
  const openssl::Certificate leaf = read(certificate);
  X509_STORE_CTX_init(check.get(), trusted.get(), leaf.get(), nullptr);
  X509_VERIFY_PARAM* const wanted = X509_STORE_CTX_get0_param(check.get());
  if (X509_VERIFY_PARAM_set1_ip_asc(wanted, host.c_str()) != 1)
    X509_VERIFY_PARAM_set1_host(wanted, host.data(), host.size());
  X509_STORE_CTX_set_purpose(check.get(), X509_PURPOSE_SSL_SERVER);
  return X509_verify_cert(check.get()) == 1;
}

TEST(Authority, SignsForTheNamesItIsLimitedToAndForNoOthers) {
  const std::vector<std::string> hosts = {"localhost", "127.0.0.1", "::1", "api.push.example.com"};
  const Authority limited(hosts);
  const std::string all = limited.issue(hosts).certificate;
  for (const std::string& host : hosts) EXPECT_TRUE(isTaken(limited, all, host)) << host;
  EXPECT_FALSE(isTaken(limited, all, "push.example.com"));
  for (const char* host : {"push.example.com", "example.com", "127.0.0.2", "::2", "xlocalhost"}) {
    EXPECT_FALSE(isTaken(limited, limited.issue(host).certificate, host)) << host;
    const Authority unlimited;
    EXPECT_TRUE(isTaken(unlimited, unlimited.issue(host).certificate, host)) << host;
  }
}

}  // namespace
}  // namespace quorvantis::server
