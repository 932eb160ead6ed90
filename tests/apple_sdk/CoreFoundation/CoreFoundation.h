// What the framework's sources use of CoreFoundation, declared.
typedef const void* CFTypeRef;
typedef const struct __CFAllocator* CFAllocatorRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFUUID* CFUUIDRef;

#ifdef __cplusplus
extern "C" {
#endif

extern CFUUIDRef CFUUIDCreate(CFAllocatorRef allocator);
extern CFStringRef CFUUIDCreateString(CFAllocatorRef allocator, CFUUIDRef uuid);

#ifdef __cplusplus
}
#endif
