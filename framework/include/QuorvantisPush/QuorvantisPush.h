// The umbrella header of QuorvantisPush.
#import <Foundation/Foundation.h>

/// The version number of the framework, as 1.0.
FOUNDATION_EXPORT __attribute__((visibility("default"))) const double QuorvantisPushVersionNumber;

/// The version string of the framework.
FOUNDATION_EXPORT __attribute__((visibility("default"))) const unsigned char QuorvantisPushVersionString[];

#import <QuorvantisPush/Push.h>
#import <QuorvantisPush/PushDelegate.h>
#import <QuorvantisPush/PushRequestData.h>
#import <QuorvantisPush/QuorvantisPushDefines.h>
