// The stand-ins for the phone's frameworks: categories and classes that act on a simulated device. The device
// has the behaviour; the stand-ins only convert values. Main thread, except for the log and the defaults.
#pragma once

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>

#include "device/device.h"

namespace quorvantis::standins {

/// The device that the stand-ins act on from now on; nullptr: none, as before the first call and as the
/// Foundation finds it while it starts.
void useDevice(device::Device* device);
device::Device* deviceInUse();

/// A new object, autoreleased; JSON's null becomes NSNull.
id objectFrom(const json::Value& value);

/// The value that an object is; null for nil, nothing for an object that is not a value.
std::optional<json::Value> valueFrom(id object);

/// A string, autoreleased; nil for nothing.
NSString* stringFrom(const std::optional<std::string>& text);

/// An object's description, for a string its characters; nothing for nil.
std::optional<std::string> textOf(id object);

/// An error whose description is the text; nil for nothing. Autoreleased.
NSError* errorFrom(const std::optional<std::string>& text);

/// An object, held until the last copy of the result is gone.
std::shared_ptr<void> holdObject(id object);

/// A block, likewise.
std::shared_ptr<void> holdBlock(const void* block);

/// Calls a block that was held, if there is one, with these arguments.
template <class... Arguments>
void callBlock(const std::shared_ptr<void>& block, Arguments... arguments) {
  if (block) reinterpret_cast<void (^)(Arguments...)>(block.get())(arguments...);
}

/// A notification arrives while the application is in the foreground: calls the center's delegate, if any.
void deliverInForeground(NSDictionary* userInfo);

/// The user responds to a notification: calls the center's delegate, if any.
void deliverResponse(NSDictionary* userInfo, NSString* actionIdentifier);

/// The application connects to a scene, as its delegate configures it, and the scene becomes active.
void connectScene();
void disconnectScenes();
/// Those that are connected; nil for none.
NSSet* connectedScenes();

/// The center's weak reference to its delegate: `object` is about to end.
void forgetDelegate(id object);

}  // namespace quorvantis::standins
