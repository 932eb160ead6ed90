"""Opens and seals protected bodies with another implementation of JSON Web Encryption.

    jose_interop.py open KEY   a sealed text on standard input, the body on standard output
    jose_interop.py seal KEY   the other way round

KEY is the 32-character hash key.
"""

import sys

from jwcrypto import jwe, jwk
from jwcrypto.common import base64url_encode


def main():
    direction, key = sys.argv[1:]
    content_key = jwk.JWK(kty="oct", k=base64url_encode(key.encode()))
    given = sys.stdin.buffer.read()
    if direction == "open":
        token = jwe.JWE(algs=["dir", "A128CBC-HS256"])
        token.deserialize(given.decode("ascii"), content_key)
        sys.stdout.buffer.write(token.payload)
    elif direction == "seal":
        header = '{"alg":"dir","enc":"A128CBC-HS256","typ":"JWE","kid":"hash"}'
        token = jwe.JWE(given, header)
        token.add_recipient(content_key)
        sys.stdout.write(token.serialize(compact=True))
    else:
        sys.exit(__doc__)


main()
