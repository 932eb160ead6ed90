// Answers with {"error":"no","token":"forged"}, encrypted with the library's key by other implementations
// (jwcrypto, and AES and HMAC combined by hand). Only the first has the specified form.
#pragma once

namespace quorvantis::sealed {

inline constexpr const char* kAsAgreed =
    "eyJhbGciOiJkaXIiLCJlbmMiOiJBMTI4Q0JDLUhTMjU2In0..W4sqDnLHXLtap57SJaQGjw."
    "-iOjZaTdKUwVv63WG6hzjyALg5vgJC3su_XSlDTfCKI.Lg6Ox6U7Jgc_9-xdbG9jvQ";

inline constexpr const char* kAlgorithmNone =
    "eyJhbGciOiJub25lIiwiZW5jIjoiQTEyOENCQy1IUzI1NiJ9..1N_kFwouPdRYhM-lSTNCtQ."
    "Kj9ZbCm__0XkBFq_Afhg9t8QiKZHw7XBZgkHQ2-mD0U.Tbb3wwNvul2S40szgdZkdA";

inline constexpr const char* kUnsecured = "eyJhbGciOiJub25lIn0.eyJlcnJvciI6Im5vIiwidG9rZW4iOiJmb3JnZWQifQ.";

inline constexpr const char* kA256GCM =
    "eyJhbGciOiAiZGlyIiwgImVuYyI6ICJBMjU2R0NNIn0..-yq4kSGxmFNpu7b8."
    "Whjv5_v-NN0veg402cD9HqWUsQlr_mlw3CNtnsel8w.T4oTLKOdBqBBavCn35tkvg";

inline constexpr const char* kA256KW =
    "eyJhbGciOiAiQTI1NktXIiwgImVuYyI6ICJBMTI4Q0JDLUhTMjU2In0."
    "DM4hRbgeHuvDhNRjZcbsRFvyher5L6AGejG-WhzENKY_SW4O4iYqLA.PmUel6q-ooQ-oHJ_2DkByw."
    "zctZ5s1BVYcbXNNQ--n8tqHRsMjNnIbGliKZ13upUdk.W6nINnDikV1xzsQ2q39d8w";

inline constexpr const char* kZip =
    "eyJhbGciOiJkaXIiLCJlbmMiOiJBMTI4Q0JDLUhTMjU2IiwiemlwIjoiREVGIn0..2oH49zH3BfTCy8VXRXyT-A."
    "b-K-fYmz--Jqd3f28SyJg2bVy7_z_d8Idx_0XKvHJl0.lL7KJysooPnyq4yKTcdl4w";

inline constexpr const char* kUnknownCrit =
    "eyJhbGciOiJkaXIiLCJlbmMiOiJBMTI4Q0JDLUhTMjU2IiwiY3JpdCI6WyJleHAiXSwiZXhwIjoxfQ."
    ".JvnADZ2WbImgJWpJcODM3Q.MN7En1LnOXP6ASHaMggoyBcEfIDlLRqq2Mwuwv9LbbM.UwQ3qaklDsXWpjMTbDTi0w";

}  // namespace quorvantis::sealed
