// sanitizer.h: whether the tests were built with the address sanitizer, which has the heap and the map of addresses.
#ifndef FINITES_TESTS_SANITIZER_H
#define FINITES_TESTS_SANITIZER_H

#if defined(__SANITIZE_ADDRESS__)
#define FINITES_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FINITES_ADDRESS_SANITIZER 1
#endif
#endif

namespace support {

#ifdef FINITES_ADDRESS_SANITIZER
constexpr bool address_sanitizer = true;
#else
constexpr bool address_sanitizer = false;
#endif

}  // namespace support

#endif
