#include "server/tls_context.h"

#include <string>
#include <string_view>

#include "server/server_error.h"

namespace quorvantis::server {
namespace {

openssl::Bio memory(const std::string& text) {
  return openssl::Bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

openssl::Certificate readCertificate(const std::string& pem) {
  return openssl::Certificate(PEM_read_bio_X509(memory(pem).get(), nullptr, nullptr, nullptr));
}

/// A client that offers only other protocols would not understand the answer.
int chooseProtocol(SSL*, const unsigned char** chosen, unsigned char* size, const unsigned char* offered,
                   unsigned offeredSize, void* wanted) {
  const std::string& name = *static_cast<const std::string*>(wanted);
  for (unsigned i = 0; i < offeredSize; i += 1U + offered[i]) {
    const std::string_view one(reinterpret_cast<const char*>(offered + i + 1), offered[i]);
    if (one != name) continue;
    *chosen = offered + i + 1;
    *size = offered[i];
    return SSL_TLSEXT_ERR_OK;
  }
  return SSL_TLSEXT_ERR_ALERT_FATAL;
}

/// The owner judges the client's certificate, not the handshake.
void askForCertificate(SSL_CTX* context, const std::string& authority) {
  const openssl::Certificate certificate = readCertificate(authority);
  if (!certificate || X509_STORE_add_cert(SSL_CTX_get_cert_store(context), certificate.get()) != 1 ||
      SSL_CTX_add_client_CA(context, certificate.get()) != 1) {
    throw ServerError("the authority for clients must be a certificate in PEM form");
  }
  static constexpr std::string_view kSessions = "clients";  // sessions are not resumed elsewhere
  SSL_CTX_set_session_id_context(context, reinterpret_cast<const unsigned char*>(kSessions.data()),
                                 kSessions.size());
  SSL_CTX_set_verify(context, SSL_VERIFY_PEER, [](int, X509_STORE_CTX*) { return 1; });
}

}  // namespace

openssl::Context makeContext(const TlsOptions& options) {
  if (options.identity.certificate.empty()) return {};
  const openssl::Certificate certificate = readCertificate(options.identity.certificate);
  const openssl::Key key(
      PEM_read_bio_PrivateKey(memory(options.identity.privateKey).get(), nullptr, nullptr, nullptr));
  openssl::Context context(SSL_CTX_new(TLS_server_method()));
  if (context && options.takesWeakKeys) SSL_CTX_set_security_level(context.get(), 0);
  if (!certificate || !key || !context || SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
      SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
    throw ServerError("the server's certificate can't be used");
  }
  const bool old = options.highestVersion != 0 && options.highestVersion < TLS1_2_VERSION;
  if (old) {
    SSL_CTX_set_cipher_list(context.get(), "DEFAULT@SECLEVEL=0");
  }
  SSL_CTX_set_min_proto_version(context.get(), old ? options.highestVersion : TLS1_2_VERSION);
  SSL_CTX_set_max_proto_version(context.get(), options.highestVersion);
  SSL_CTX_set_options(context.get(), SSL_OP_NO_RENEGOTIATION);
  SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
  if (!options.protocol.empty())
    SSL_CTX_set_alpn_select_cb(context.get(), chooseProtocol, const_cast<std::string*>(&options.protocol));
  if (!options.clientAuthority.empty()) askForCertificate(context.get(), options.clientAuthority);
  return context;
}

}  // namespace quorvantis::server
