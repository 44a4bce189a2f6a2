// Names for the cases of parameterised tests.
#pragma once

#include <string>

// The case's own member `name`.
constexpr auto nameOfCase = [](const auto &instance) { return std::string(instance.param.name); };
