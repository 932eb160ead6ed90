// Owners of OpenSSL objects.
#pragma once

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include "base/c_handle.h"

namespace quorvantis::server::openssl {

using Key = base::CHandle<EVP_PKEY, EVP_PKEY_free>;
using Certificate = base::CHandle<X509, X509_free>;
using Extension = base::CHandle<X509_EXTENSION, X509_EXTENSION_free>;
using Name = base::CHandle<GENERAL_NAME, GENERAL_NAME_free>;
using Names = base::CHandle<GENERAL_NAMES, GENERAL_NAMES_free>;
using Constraints = base::CHandle<NAME_CONSTRAINTS, NAME_CONSTRAINTS_free>;
using Subtree = base::CHandle<GENERAL_SUBTREE, GENERAL_SUBTREE_free>;
using Bio = base::CHandle<BIO, BIO_free_all>;
using Context = base::CHandle<SSL_CTX, SSL_CTX_free>;
using Ssl = base::CHandle<SSL, SSL_free>;

}  // namespace quorvantis::server::openssl
