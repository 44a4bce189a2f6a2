// Which sanitizer the tests are built with.
#pragma once

#ifdef __SANITIZE_ADDRESS__
constexpr bool underAddressSanitizer = true;
#else
constexpr bool underAddressSanitizer = false;
#endif
