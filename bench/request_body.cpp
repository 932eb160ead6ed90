#include "bench/request_body.h"

#include "bench/phone.h"
#include "platform/simulated/values.h"

namespace quorvantis::bench {

using platform::NSString;

StoredTexts storedTexts() {
  return {
      R"({"bundle":"com.example.shop","version":"3.2.1","build":"4711","hash":"0f4b1c","install":1700000000})",
      R"({"name":"iPhone","model":"iPhone","system":"17.0","language":"en","zone":"US","memory":6144})",
      R"({"name":"QuorvantisPush","version":"1.0"})", R"({"lat":40.4168,"lon":-3.7038,"accuracy":65.0})"};
}

std::string tokenText() {
  return "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
}

NSString bodyByLibrary() {
  static const platform::Ref<PushRequestData>& client = *[] {
    const StoredTexts texts = storedTexts();
    Phone::only().device.storeFromElsewhere({{"quorvantis_jsonAppPush", texts.app},
                                             {"quorvantis_jsonDevice", texts.device},
                                             {"quorvantis_jsonLibreriaPush", texts.library},
                                             {"jsonGeo", texts.geo}});
    return new platform::Ref<PushRequestData>(platform::make<PushRequestData>());
  }();
  static const auto& task = *new NSString(NSString::stringWithUTF8String("pushlibRegistrarToken"));
  static const auto& token = *new NSString(NSString::stringWithUTF8String(tokenText()));
  return NSString::stringWithFormat("&tarea=%@&token=%@&%@", {task, token, client->crearCamposComunes()});
}

std::string bodyText() {
  return platform::simulated::textOf(bodyByLibrary()).value_or("");
}

}  // namespace quorvantis::bench
