#include "server/authority.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/rsa.h>

#include <array>
#include <ctime>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "server/openssl_handles.h"

namespace quorvantis::server {
namespace {

constexpr const char* kAuthorityName = "Quorvantis development authority";
constexpr auto kAuthorityAge = std::chrono::hours(24 * 30);
constexpr auto kAuthorityLife = std::chrono::hours(24 * 365 * 10);

void require(bool done, const char* what) {
  if (!done) throw std::runtime_error(std::string("OpenSSL can't create ") + what);
}

openssl::Key newKey(int rsaBits) {
  openssl::Key key(rsaBits > 0 ? EVP_RSA_gen(static_cast<unsigned>(rsaBits)) : EVP_EC_gen("P-256"));
  require(key != nullptr, "a key");
  return key;
}

void setSerial(X509* certificate) {
  std::array<unsigned char, 16> random{};
  require(RAND_bytes(random.data(), static_cast<int>(random.size())) == 1, "a serial number");
  random[0] = static_cast<unsigned char>((random[0] & 0x3F) | 0x40);  // positive, and of fixed length
  BIGNUM* number = BN_bin2bn(random.data(), static_cast<int>(random.size()), nullptr);
  const bool done =
      number != nullptr && BN_to_ASN1_INTEGER(number, X509_get_serialNumber(certificate)) != nullptr;
  BN_free(number);
  require(done, "a serial number");
}

void setValidity(X509* certificate, std::chrono::seconds notBefore, std::chrono::seconds notAfter) {
  std::time_t now = std::time(nullptr);
  require(X509_time_adj_ex(X509_getm_notBefore(certificate), 0, long{notBefore.count()}, &now) != nullptr &&
              X509_time_adj_ex(X509_getm_notAfter(certificate), 0, long{notAfter.count()}, &now) != nullptr,
          "a validity period");
}

void setName(X509_NAME* name, const std::string& commonName) {
  require(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                                     reinterpret_cast<const unsigned char*>(commonName.data()),
                                     static_cast<int>(commonName.size()), -1, 0) == 1,
          "a name");
}

void addExtension(X509* certificate, X509* issuer, int kind, const char* value) {
  X509V3_CTX context;
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  X509V3_set_ctx_nodb(&context);
  const openssl::Extension extension(X509V3_EXT_conf_nid(nullptr, &context, kind, value));
  require(extension != nullptr && X509_add_ext(certificate, extension.get(), -1) == 1, "an extension");
}

/// The address's 4 or 16 bytes; nothing for a name.
std::optional<std::string> addressBytes(const std::string& host) {
  std::string bytes(sizeof(in6_addr), '\0');
  if (::inet_pton(AF_INET, host.c_str(), bytes.data()) == 1) return bytes.substr(0, sizeof(in_addr));
  return ::inet_pton(AF_INET6, host.c_str(), bytes.data()) == 1 ? std::optional(bytes) : std::nullopt;
}

/// Not in the textual form above, in which a comma would begin another name. An address that an authority is
/// limited to is followed by its mask.
openssl::Name generalName(const std::string& host, bool withMask = false) {
  auto address = addressBytes(host);
  if (address && withMask) address->append(address->size(), '\xFF');
  const std::string& value = address ? *address : host;
  openssl::Name name(GENERAL_NAME_new());
  ASN1_STRING* text = ASN1_STRING_type_new(address ? V_ASN1_OCTET_STRING : V_ASN1_IA5STRING);
  require(name != nullptr && text != nullptr &&
              ASN1_STRING_set(text, value.data(), static_cast<int>(value.size())) == 1,
          "a host's name");
  GENERAL_NAME_set0_value(name.get(), address ? GEN_IPADD : GEN_DNS, text);
  return name;
}

void addHosts(X509* certificate, const std::vector<std::string>& hosts) {
  const openssl::Names names(GENERAL_NAMES_new());
  require(names != nullptr, "a host's name");
  for (const std::string& host : hosts) {
    openssl::Name name = generalName(host);
    require(sk_GENERAL_NAME_push(names.get(), name.get()) > 0, "a host's name");
    (void)name.release();
  }
  require(X509_add1_ext_i2d(certificate, NID_subject_alt_name, names.get(), 0, X509V3_ADD_DEFAULT) == 1,
          "a host's name");
}

void limitTo(X509* certificate, const std::vector<std::string>& hosts) {
  const openssl::Constraints constraints(NAME_CONSTRAINTS_new());
  require(constraints != nullptr, "a limit");
  constraints->permittedSubtrees = sk_GENERAL_SUBTREE_new_null();
  for (const std::string& host : hosts) {
    openssl::Subtree subtree(GENERAL_SUBTREE_new());
    require(subtree != nullptr, "a limit");
    GENERAL_NAME_free(std::exchange(subtree->base, generalName(host, true).release()));
    require(sk_GENERAL_SUBTREE_push(constraints->permittedSubtrees, subtree.get()) > 0, "a limit");
    (void)subtree.release();
  }
  require(X509_add1_ext_i2d(certificate, NID_name_constraints, constraints.get(), 1, X509V3_ADD_DEFAULT) == 1,
          "a limit");
  addExtension(certificate, certificate, NID_ext_key_usage, "serverAuth");
}

template <class Write>
std::string pem(Write write) {
  const openssl::Bio memory(BIO_new(BIO_s_mem()));
  require(memory != nullptr && write(memory.get()) == 1, "PEM");
  char* text = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &text);
  return {text, static_cast<std::size_t>(size)};
}

std::string pem(X509* certificate) {
  return pem([&](BIO* to) { return PEM_write_bio_X509(to, certificate); });
}

std::string pem(EVP_PKEY* key) {
  return pem(
      [&](BIO* to) { return PEM_write_bio_PKCS8PrivateKey(to, key, nullptr, nullptr, 0, nullptr, nullptr); });
}

/// Without a name, an issuer and a signature.
openssl::Certificate blank(EVP_PKEY* key, std::chrono::seconds notBefore, std::chrono::seconds notAfter) {
  openssl::Certificate certificate(X509_new());
  require(certificate != nullptr && X509_set_version(certificate.get(), X509_VERSION_3) == 1 &&
              X509_set_pubkey(certificate.get(), key) == 1,
          "a certificate");
  setSerial(certificate.get());
  setValidity(certificate.get(), notBefore, notAfter);
  return certificate;
}

}  // namespace

struct Authority::State {
  openssl::Key key;
  openssl::Certificate certificate;
};

Authority::Authority(const std::vector<std::string>& only) : state_(std::make_unique<State>()) {
  state_->key = newKey(0);
  state_->certificate = blank(state_->key.get(), -kAuthorityAge, kAuthorityLife);
  X509* certificate = state_->certificate.get();
  setName(X509_get_subject_name(certificate), kAuthorityName);
  require(X509_set_issuer_name(certificate, X509_get_subject_name(certificate)) == 1, "a name");
  addExtension(certificate, certificate, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  addExtension(certificate, certificate, NID_key_usage, "critical,keyCertSign,cRLSign");
  addExtension(certificate, certificate, NID_subject_key_identifier, "hash");
  if (!only.empty()) limitTo(certificate, only);
  require(X509_sign(certificate, state_->key.get(), EVP_sha256()) > 0, "a signature");
}

Authority::~Authority() = default;

std::string Authority::certificate() const {
  return pem(state_->certificate.get());
}

bool Authority::isCertificate(const std::string& text) {
  const openssl::Bio memory(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
  require(memory != nullptr, "a reader");
  const openssl::Certificate certificate(PEM_read_bio_X509(memory.get(), nullptr, nullptr, nullptr));
  ERR_clear_error();
  if (certificate == nullptr || pem(certificate.get()) != text) return false;
  std::array<char, 64> name{};
  X509_NAME_get_text_by_NID(X509_get_subject_name(certificate.get()), NID_commonName, name.data(),
                            static_cast<int>(name.size()));
  return std::string_view(name.data()) == kAuthorityName;
}

Identity Authority::issue(const std::string& host, IssueOptions options) const {
  return issue(std::vector{host}, options);
}

Identity Authority::issue(const std::vector<std::string>& hosts, IssueOptions options) const {
  const openssl::Key key = newKey(options.rsaBits);
  const openssl::Certificate certificate = blank(key.get(), options.notBefore, options.notAfter);
  X509* issuer = options.selfSigned ? certificate.get() : state_->certificate.get();
  setName(X509_get_subject_name(certificate.get()), "Quorvantis development server");
  require(X509_set_issuer_name(certificate.get(), X509_get_subject_name(issuer)) == 1, "a name");
  addExtension(certificate.get(), issuer, NID_basic_constraints, "critical,CA:FALSE");
  addExtension(certificate.get(), issuer, NID_key_usage, "critical,digitalSignature");
  addExtension(certificate.get(), issuer, NID_ext_key_usage, "serverAuth");
  addExtension(certificate.get(), issuer, NID_subject_key_identifier, "hash");
  addExtension(certificate.get(), issuer, NID_authority_key_identifier, "keyid:always");
  addHosts(certificate.get(), hosts);
  EVP_PKEY* signer = options.selfSigned ? key.get() : state_->key.get();
  require(X509_sign(certificate.get(), signer, EVP_sha256()) > 0, "a signature");
  return {pem(certificate.get()), pem(key.get())};
}

}  // namespace quorvantis::server
