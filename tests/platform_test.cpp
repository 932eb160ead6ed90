#include <thread>
#include <type_traits>

#include "platform/CFUUID.h"
#include "platform/NSArray.h"
#include "platform/NSBundle.h"
#include "platform/NSLocale.h"
#include "platform/NSUserDefaults.h"
#include "platform/UIAlertController.h"
#include "platform/UIDevice.h"
#include "platform/simulated/Front.h"
#include "tests/phone.h"

namespace quorvantis::platform {
namespace {

using simulated::WeakObject;

static_assert(std::is_nothrow_move_constructible_v<NSString> && std::is_nothrow_move_assignable_v<NSString>);
static_assert(std::is_nothrow_copy_constructible_v<NSString> &&
              std::is_nothrow_default_constructible_v<NSString>);
static_assert(!std::is_convertible_v<NSString, bool> && !std::is_convertible_v<Object, NSString>);

class Thing : public NSObject {
 public:
  void init() { ++inits; }
  int inits = 0;
};
using CountedThing = Counted<Thing>;

using PlatformTest = PhoneTest;

TEST_F(PlatformTest, HandlesShareTheirObjectAndMovesEmptyTheSource) {
  Object first = make<CountedThing>()->self();
  Object second = first;
  EXPECT_TRUE(second.isSame(first));
  Object third = std::move(first);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
  second = third;
  const Object& alias = third;
  third = alias;
  second = nullptr;
  EXPECT_EQ(CountedThing::live, 1);

  const auto typed = std::move(third).as<NSString>();
  EXPECT_FALSE(third);  // NOLINT(bugprone-use-after-move)
  Object untyped = typed;
  EXPECT_TRUE(untyped.as<NSDictionary>().isSame(typed));
  EXPECT_TRUE(untyped);
  untyped = make<CountedThing>()->self();
  EXPECT_EQ(CountedThing::live, 2);
}

TEST_F(PlatformTest, AnObjectReleasedByAnAssignmentFindsTheNewOneInPlace) {
  struct Curious : Thing {
    Curious(const Object& itsHolder, Object& itsSight) : holder(itsHolder), sight(itsSight) {}
    ~Curious() override { sight = holder; }
    const Object& holder;
    Object& sight;
  };
  Object holder, sight;
  holder = make<Curious>(holder, sight)->self();
  const Object next = text("next");
  holder = next;
  EXPECT_TRUE(sight.isSame(next));
}

TEST_F(PlatformTest, IdentityAndEqualityDiffer) {
  const Object a = text("a");
  const Object alsoA = text("a");
  EXPECT_TRUE(a.isEqual(alsoA) && a.isEqual(a));
  EXPECT_FALSE(a.isSame(alsoA) || a.isEqual(text("b")) || a.isEqual(data("a")) || a.isEqual(nullptr));
  EXPECT_TRUE(Object().isSame(nullptr));
  EXPECT_FALSE(Object().isEqual(nullptr) || Object().isEqual(a));
}

TEST_F(PlatformTest, AWindowForgetsTheRootThatItReplaces) {
  const UIViewController first = UIViewController::new_();
  {
    const UIWindow window = UIWindow::initWithFrame({});
    window.setRootViewController(first);
    window.setRootViewController(UIViewController::new_());
  }
  first.presentViewController(
      UIAlertController::alertControllerWithTitle(nullptr, nullptr, UIAlertControllerStyle::alert), true);
  EXPECT_TRUE(take({"alertShown"}).empty());
}

TEST_F(PlatformTest, NilAcceptsEveryMessageAndReturnsNothing) {
  const Object nil;
  nil.send({"onError:"}, text("x"));
  EXPECT_FALSE(nil.respondsToSelector({"onError:"}));
  EXPECT_FALSE(nil.as<NSString>().isEqualToString(nullptr));
  EXPECT_EQ(nil.as<NSString>().compare(text("10.0"), NSNumericSearch), NSComparisonResult::same);
  EXPECT_FALSE(nil.as<NSString>().stringByReplacingOccurrencesOfString(text("<"), text("")));
  EXPECT_FALSE(NSString::initWithData(nullptr));
  EXPECT_EQ(nil.as<NSNumber>().integerValue(), 0);
  EXPECT_EQ(nil.as<NSData>().length(), 0u);
  EXPECT_EQ(nil.as<NSData>().bytes(), nullptr);
  EXPECT_FALSE(nil.as<NSData>().description());
  EXPECT_FALSE(nil.as<NSArray>().objectAtIndex(3));
  EXPECT_FALSE(nil.as<NSDictionary>().objectForKey(text("k")));
  nil.as<NSDictionary>().enumerateKeys([](const NSString&) { FAIL(); });
  nil.as<NSMutableDictionary>().setObject(text("v"), text("k"));
  EXPECT_FALSE(nil.as<NSMutableDictionary>().copy());
  EXPECT_FALSE(nil.as<NSBundle>().infoDictionary());
  EXPECT_FALSE(nil.as<NSLocale>().countryCode());
  EXPECT_FALSE(CFUUIDCreateString(nullptr));

  const auto defaults = nil.as<NSUserDefaults>();
  defaults.setObject(text("v"), text("k"));
  EXPECT_FALSE(defaults.objectForKey(text("k")) || defaults.synchronize() || stored("k"));

  const auto phone = nil.as<UIDevice>();
  EXPECT_FALSE(phone.systemVersion() || phone.name() || phone.model());
  const auto application = nil.as<UIApplication>();
  EXPECT_EQ(application.applicationState(), UIApplicationState::active);
  application.setApplicationIconBadgeNumber(1);
  application.registerForRemoteNotifications();
  application.openURL(nullptr);

  const auto window = nil.as<UIWindow>();
  window.setRootViewController(UIViewController::new_());
  EXPECT_FALSE(window.rootViewController());
  window.setWindowLevel(1);
  window.makeKeyAndVisible();
  window.setHidden(true);
  EXPECT_EQ(nil.as<UIScreen>().bounds().width, 0);
  const auto alert =
      UIAlertController::alertControllerWithTitle(nullptr, nullptr, UIAlertControllerStyle::alert);
  nil.as<UIViewController>().presentViewController(alert, true);
  nil.as<UIAlertController>().addAction(nullptr);

  const auto connexion = nil.as<QuorvantisConnexion>();
  connexion.setDelegate(nullptr);
  connexion.setEncryption(true);
  connexion.setHashKey(text("k"));
  connexion.setConnexionValue(text("v"));
  connexion.setConnexionUrl(text("u"));
  connexion.sendConnexion(text("p"));
  connexion.cancel();
  EXPECT_FALSE(connexion.receivedData());

  const auto registration = nil.as<QuorvantisRegisterLib>();
  registration.setDelegate(nullptr);
  registration.setWaitUntilGPSAdquiredToRegister(true);
  registration.setDeactivateGPS(true);
  registration.registerUser(nullptr, nullptr, nullptr, nullptr);

  const auto center = nil.as<UNUserNotificationCenter>();
  center.setDelegate(nullptr);
  center.requestAuthorizationWithOptions(7, nullptr);
  nil.as<UNNotificationPresentationHandler>()(4);
  EXPECT_FALSE(nil.as<UNNotification>().userInfo());
  EXPECT_FALSE(nil.as<UNNotificationResponse>().notification());
  EXPECT_TRUE(device.record.take().empty());
}

TEST_F(PlatformTest, OtherObjectsRaiseWhatTheyDoNotUnderstand) {
  const Object number = simulated::objectFrom(7);
  EXPECT_EQ(raisedBy([&] { (void)number.as<NSString>().isEqualToString(text("7")); }), "isEqualToString:");
  EXPECT_EQ(raisedBy([&] { (void)text("t").as<NSDictionary>().objectForKey(text("k")); }), "objectForKey:");
  EXPECT_EQ(raisedBy([&] { (void)data("t").as<NSNumber>().integerValue(); }), "integerValue");
  EXPECT_EQ(raisedBy([&] { (void)number.as<NSData>().length(); }), "length");
  EXPECT_EQ(raisedBy([&] { (void)number.as<NSData>().bytes(); }), "bytes");
  EXPECT_EQ(raisedBy([&] { number.send({"onError:"}, nullptr); }), "onError:");
  EXPECT_EQ(raisedBy([] { make<Thing>()->self().send({"onError:"}, nullptr); }), "onError:");
}

TEST_F(PlatformTest, AConstantStringIsOneObjectForAllThreads) {
  static constinit const ConstantString constant{"constant"};
  std::vector<void*> seen(4);
  std::vector<std::thread> threads;
  threads.reserve(seen.size());
  for (void*& mine : seen) {
    threads.emplace_back([&mine] {
      const NSString& object = constant;
      mine = object.get();
    });
  }
  for (std::thread& thread : threads) thread.join();
  const NSString& object = constant;
  EXPECT_EQ(seen, std::vector<void*>(4, object.get()));
  EXPECT_EQ(read(object), "constant");
}

TEST_F(PlatformTest, AnObjectLivesAsLongAsItsFront) {
  Ref<CountedThing> thing = make<CountedThing>();
  EXPECT_EQ(thing->inits, 1);
  const Object front = thing->self();
  Ref<Thing> base = std::move(thing);
  EXPECT_FALSE(thing);  // NOLINT(bugprone-use-after-move)
  base = {};
  EXPECT_EQ(CountedThing::live, 1);
  EXPECT_NE(dynamic_cast<Thing*>(simulated::coreOf(front)), nullptr);
  EXPECT_EQ(simulated::coreOf(text("t")), nullptr);
}

TEST_F(PlatformTest, AGivenFrontOwnsTheObject) {
  struct Fronted : NSObject {
    explicit Fronted(void* front) : NSObject(front) {}
    ~Fronted() override = default;
  };
  const Object front = text("front");
  {
    Fronted fronted(front.get());
    EXPECT_TRUE(fronted.self().isSame(front));
    const auto held = Ref<Fronted>::retain(&fronted);
    EXPECT_EQ(held.get(), &fronted);
  }
  EXPECT_EQ(read(front), "front");
}

TEST_F(PlatformTest, AFailedConstructionLeavesNothingBehind) {
  struct FailsToConstruct : CountedThing {
    FailsToConstruct() { throw 1; }
  };
  struct FailsToInit : CountedThing {
    void init() { throw 2; }  // NOLINT: hides on purpose
  };
  EXPECT_THROW(make<FailsToConstruct>(), int);
  EXPECT_THROW(make<FailsToInit>(), int);
  EXPECT_EQ(CountedThing::live, 0);
}

TEST_F(PlatformTest, AnObjectMayPassItselfOnDuringItsDestruction) {
  struct Parting : CountedThing {
    ~Parting() override { const Object last = self(); }
  };
  make<Parting>();
  EXPECT_EQ(CountedThing::live, 0);
}

TEST_F(PlatformTest, AWeakReferenceGivesTheObjectUntilItEnds) {
  struct Watched : CountedThing {
    explicit Watched(bool& itsSight) : sight(itsSight) {}
    ~Watched() override { sight = bool(weak.lock()); }
    WeakObject weak;
    bool& sight;
  };
  bool seenInItsEnd = true;
  auto watched = make<Watched>(seenInItsEnd);
  const WeakObject weak(watched->self());
  watched->weak = weak;
  EXPECT_TRUE(weak.lock().isSame(watched->self()));
  watched = {};
  EXPECT_FALSE(weak.lock() || seenInItsEnd);
  EXPECT_FALSE(WeakObject(nullptr).lock() || WeakObject(text("no object of the library")).lock());
}

TEST_F(PlatformTest, AWeakReferenceMayBeLockedWhileTheLastCountIsReleased) {
  for (int round = 0; round < 200; ++round) {
    auto thing = make<CountedThing>();
    const WeakObject weak(thing->self());
    std::thread reader([weak] {
      while (const Object object = weak.lock()) EXPECT_NE(simulated::coreOf(object), nullptr);
    });
    thing = {};
    reader.join();
  }
  EXPECT_EQ(CountedThing::live, 0);
}

}  // namespace
}  // namespace quorvantis::platform
