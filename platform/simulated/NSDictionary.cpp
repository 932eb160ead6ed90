#include "platform/NSDictionary.h"

#include "platform/simulated/values.h"

namespace quorvantis::platform {

using simulated::DictionaryInstance;
using simulated::known;
using simulated::receiver;
using simulated::StringInstance;

Object NSDictionary::objectForKey(const NSString& key) const {
  const auto* dictionary = receiver<DictionaryInstance>(*this, {"objectForKey:"});
  if (dictionary == nullptr) return nullptr;
  const Object* object = dictionary->find(known<StringInstance>(key)->text);
  return object == nullptr ? Object() : *object;
}

void NSDictionary::enumerateKeys(const std::function<void(const NSString& key)>& visit) const {
  const auto* dictionary =
      receiver<DictionaryInstance>(*this, {"countByEnumeratingWithState:objects:count:"});
  if (dictionary == nullptr) return;
  for (const auto& [key, value] : dictionary->entries()) visit(key);
}

bool NSDictionary::isKindOf(const Object& object) {
  return simulated::instanceAs<DictionaryInstance>(object) != nullptr;
}

NSMutableDictionary NSMutableDictionary::dictionary() {
  return simulated::makeInstance<NSMutableDictionary, DictionaryInstance>();
}

void NSMutableDictionary::setObject(Object object, const NSString& forKey) const {
  constexpr Selector kSelector{"setObject:forKey:"};
  auto* dictionary = receiver<DictionaryInstance>(*this, kSelector);
  if (dictionary == nullptr) return;
  if (!dictionary->isMutable()) doesNotRecognizeSelector(kSelector);
  dictionary->set(forKey, std::move(object));
}

NSDictionary NSMutableDictionary::copy() const {
  auto* dictionary = receiver<DictionaryInstance>(*this, {"copy"});
  return dictionary != nullptr ? dictionary->copy().as<NSDictionary>() : NSDictionary();
}

}  // namespace quorvantis::platform
