// PushRequestData: reports a request's outcome.
#include "platform/NSJSONSerialization.h"
#include "registration/PushRequestData.h"
#include "registration/callbacks.h"
#include "registration/tasks.h"

namespace quorvantis {

using platform::ConstantString;
using platform::NSData;
using platform::NSDictionary;
using platform::NSString;
using platform::Object;

struct PushRequestData::Outcome {
  const ConstantString& task;
  platform::Selector success;
  const ConstantString& unusable;
};

namespace {

constinit const ConstantString kRegisterUnusable{"Error --> registerToken"};
constinit const ConstantString kChangeUnusable{"Error --> changeToken"};
constinit const ConstantString kUpdateUnusable{"Error --> updateTerminals"};

constinit const ConstantString kErrorKey{"error"};
constinit const ConstantString kDescriptionKey{"errorDescripcion"};
constinit const ConstantString kTokenKey{"token"};
constinit const ConstantString kRefused{"si"};

constinit const ConstantString kErrorText{"error"};
constinit const ConstantString kEmptyText{""};

bool isUnusable(const NSData& body) {
  if (!body) return true;
  const NSString text = NSString::initWithData(body);
  return text.isEqualToString(kErrorText) || text.isEqualToString(kEmptyText);
}

// An answer that is not an object is read as an empty one: a server must not be able to crash the
// application.
NSDictionary membersOf(const NSData& body) {
  using namespace platform::NSJSONSerialization;
  Object answer = JSONObjectWithData(body, NSJSONReadingMutableLeaves);
  return NSDictionary::isKindOf(answer) ? std::move(answer).as<NSDictionary>() : NSDictionary();
}

}  // namespace

void PushRequestData::downloadFinished(const NSString& connexionValue) {
  const Outcome outcomes[] = {
      {tasks::registrarToken, callbacks::onRegisterToken, kRegisterUnusable},
      {tasks::cambioToken, callbacks::onUpdateToken, kChangeUnusable},
      {tasks::actualizarDatosTerminal, callbacks::onUpdateToken, kUpdateUnusable},
  };
  for (const Outcome& outcome : outcomes) {
    if (connexionValue.isEqualToString(outcome.task)) handleAnswer(outcome);
  }
}

void PushRequestData::handleAnswer(const Outcome& outcome) {
  using callbacks::sendIfResponds;
  const auto body = conexion.receivedData().objectForKey(outcome.task).as<NSData>();
  if (isUnusable(body)) {
    const NSString& text = outcome.unusable;
    sendIfResponds(delegate_.get(), callbacks::onError, text);
    return;
  }

  const NSDictionary answer = membersOf(body);
  const NSString& refused = kRefused;
  if (answer.objectForKey(kErrorKey).isEqual(refused)) {
    const Object description = answer.objectForKey(kDescriptionKey);
    sendIfResponds(delegate_.get(), callbacks::onError, description);
    return;
  }
  const Object token = answer.objectForKey(kTokenKey);
  sendIfResponds(delegate_.get(), outcome.success, token);
}

}  // namespace quorvantis
