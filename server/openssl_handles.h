// Owners of OpenSSL's objects.
#pragma once

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include "jose/c_handle.h"

namespace quorvantis::server::openssl {

using Key = CHandle<EVP_PKEY, EVP_PKEY_free>;
using Certificate = CHandle<X509, X509_free>;
using Extension = CHandle<X509_EXTENSION, X509_EXTENSION_free>;
using Names = CHandle<GENERAL_NAMES, GENERAL_NAMES_free>;
using Bio = CHandle<BIO, BIO_free_all>;
using Context = CHandle<SSL_CTX, SSL_CTX_free>;
using Ssl = CHandle<SSL, SSL_free>;

}  // namespace quorvantis::server::openssl
