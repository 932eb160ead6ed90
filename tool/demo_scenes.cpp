#include "tool/demo_scenes.h"

namespace quorvantis::tool {

namespace {

Act registration() {
  return {
      "Act one: from permission to a registered token",
      {
          {"First launch",
           "The host switches notifications on. The user allows them, the system hands out a device token, "
           "and Push registers it with the push server.",
           R"({"do":"registration","stores":{"quorvantis_jsonAppPush":"{\"name\":\"Demo\"}","quorvantis_jsonDevice":"{\"os\":\"iOS\"}"}}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"authorizationRequested", "callback onGetToken:", "received pushlibRegistrarToken",
            "callback onRegisterToken:"},
           {"received pushlibCambioToken"}},
          {"Second launch, same token",
           "The system hands out the token that the server already knows: there is nothing to send.",
           R"({"do":"relaunch"}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"callback onGetToken:", "stored tokenMovil"},
           {"received pushlibRegistrarToken", "received pushlibCambioToken"}},
          {"The token has changed",
           "The system has a new token for this application. Push sends the server the old token and the new "
           "one.",
           R"({"do":"device","token":"aabbccddeeff00112233445566778899aabbccddeeff00112233445566778899"}
{"do":"relaunch"}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"callback onGetToken:", "received pushlibCambioToken", "callback onUpdateToken:"},
           {"received pushlibRegistrarToken"}},
          {"The server refuses",
           "A restored backup holds a token that the server has never seen. The refusal is only logged: the "
           "host "
           "gets no callback.",
           R"({"do":"store","set":{"tokenMovil":"0123456789abcdef"}}
{"do":"relaunch"}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"received pushlibCambioToken", "log"},
           {"callback onUpdateToken:", "callback onError:"}},
          {"The request for permission fails",
           "The system reports an error instead of the user's answer. Nothing more happens.",
           R"({"do":"authorization","granted":false,"error":"Notifications are not allowed for this application"}
{"do":"relaunch"}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"authorizationRequested"},
           {"registerForRemoteNotifications", "callback onGetToken:"}},
          {"The system has no token",
           "Permission is granted, but the system can't reach its push service. Push writes two log lines.",
           R"({"do":"authorization","granted":true,"error":null}
{"do":"device","token":null,"tokenError":"no connection to the push service"}
{"do":"relaunch"}
{"do":"host","appHash":"f00d-cafe"}
{"do":"activate","value":true}
{"do":"settle"})",
           {"registerForRemoteNotifications", "log", "log"},
           {"callback onGetToken:", "callback onError:"}},
      }};
}

Act notifications() {
  return {
      "Act two: notifications arrive",
      {
          {"A plain notification in the foreground",
           "The application is open and has asked for notifications in the foreground: the system shows it, "
           "the phone vibrates, the badge changes, the host gets a report.",
           R"({"do":"host","foreground":true}
{"do":"notification","arrives":"foreground","userInfo":{"aps":{"alert":{"title":"Hello","body":"World"},"badge":3,"type":"pushlib-normal"}}})",
           {"presented", "badge 3", "vibrated", "callback onReceiveNotification:"},
           {"alertShown"}},
          {"A notification that opens the application",
           "It arrives in the background, with \"content-available\", so the system wakes the application. "
           "The "
           "host gets a report; opening the application is up to the system.",
           R"({"do":"application","state":"background"}
{"do":"notification","arrives":"background","userInfo":{"aps":{"alert":{"title":"Come back"},"content-available":1,"type":"pushlib-abrirapp"}}})",
           {"vibrated", "callback onReceiveNotification:"},
           {"alertShown", "opened"}},
          {"A link, while the application is in the foreground",
           "Push shows an alert in the application. Its only button opens the link.",
           R"({"do":"application","state":"active"}
{"do":"notification","arrives":"foreground","userInfo":{"aps":{"alert":{"title":"News","body":"Read all about it."},"type":"pushlib-abrirurl","urlnoti":"https://www.quorvantis.com/news"}}}
{"do":"tapOK","alert":1})",
           {"alertShown", "callback onReceiveNotification:", "opened https://www.quorvantis.com/news",
            "alertHidden"},
           {}},
          {"A link, tapped in the notification center",
           "The link opens one second after the tap, and no report is sent.",
           R"({"do":"notification","arrives":"tap","userInfo":{"aps":{"alert":{"title":"Offers"},"type":"pushlib-abrirurl","urlnoti":"https://www.quorvantis.com/offers"}}}
{"do":"advance","seconds":1})",
           {"opened https://www.quorvantis.com/offers"},
           {"callback onReceiveNotification:", "alertShown"}},
          {"Values for the application",
           "Up to five values go into the user defaults, for the host to read whenever it likes.",
           R"({"do":"application","state":"background"}
{"do":"notification","arrives":"background","userInfo":{"aps":{"alert":{"title":"Your code"},"content-available":1,"type":"pushlib-extras","extra1":"SPRING","extra2":20}}})",
           {"stored pushExtra1", "stored pushExtra2", "synchronized", "callback onReceiveNotification:"},
           {"vibrated"}},
          {"A silent notification",
           "Without an alert nothing is shown, set or stored; the host gets the whole payload in a report.",
           R"({"do":"notification","arrives":"background","userInfo":{"aps":{"content-available":1,"badge":9,"room":"kitchen"}}})",
           {"callback onReceiveNotification:"},
           {"badge 9", "vibrated"}},
          {"A payload that ends the application",
           "The library can't handle an \"alert\" that is a string. `quorvantis-push payload` finds such "
           "payloads "
           "before they are sent.",
           R"({"do":"notification","arrives":"background","userInfo":{"aps":{"alert":"Hello","content-available":1}}})",
           {"raised objectForKey:"},
           {"callback onReceiveNotification:"}},
      }};
}

}  // namespace

const std::vector<Act>& demoActs() {
  static const auto& acts = *new std::vector<Act>{registration(), notifications()};
  return acts;
}

}  // namespace quorvantis::tool
