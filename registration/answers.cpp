// PushRequestData: what a request's outcome is told as.
#include "facade/PushDelegate.h"
#include "platform/NSJSONSerialization.h"
#include "registration/PushRequestData.h"
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

// An answer whose top level is no object is read as one without members: no server makes the application end.
NSDictionary membersOf(const NSData& body) {
  using namespace platform::NSJSONSerialization;
  Object answer = JSONObjectWithData(body, NSJSONReadingMutableLeaves);
  return NSDictionary::isKindOf(answer) ? std::move(answer).as<NSDictionary>() : NSDictionary();
}

}  // namespace

void PushRequestData::downloadFinished(const NSString& connexionValue) {
  const Outcome outcomes[] = {
      {tasks::registrarToken, callbacks::OnRegisterToken::selector, kRegisterUnusable},
      {tasks::cambioToken, callbacks::OnUpdateToken::selector, kChangeUnusable},
      {tasks::actualizarDatosTerminal, callbacks::OnUpdateToken::selector, kUpdateUnusable},
  };
  for (const Outcome& outcome : outcomes) {
    if (connexionValue.isEqualToString(outcome.task)) handleAnswer(outcome);
  }
}

void PushRequestData::handleAnswer(const Outcome& outcome) {
  const auto body = conexion.receivedData().objectForKey(outcome.task).as<NSData>();
  const Object receiver = delegate();
  if (isUnusable(body)) {
    const NSString& text = outcome.unusable;
    sendIfResponds(receiver, callbacks::OnError::selector, text);
    return;
  }

  const NSDictionary answer = membersOf(body);
  const NSString& refused = kRefused;
  if (answer.objectForKey(kErrorKey).isEqual(refused)) {
    sendIfResponds(receiver, callbacks::OnError::selector, answer.objectForKey(kDescriptionKey));
    return;
  }
  sendIfResponds(receiver, outcome.success, answer.objectForKey(kTokenKey));
}

}  // namespace quorvantis
