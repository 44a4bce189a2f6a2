// What must hold for any sequence of deeds on a LineEditCustom.
#pragma once

#include <string>
#include <string_view>

// Each line is a deed, its first character says which:
//   t text      enter the text               p number    add the policy
//   n name      the field's name             N name      the same in bold
//   v number    forbid the value             V number    forbid the value alone
//   u a,b       the names already used       c a,b       the characters forbidden
//   < number    the minimum                  > number    the maximum
//   e, d        enable, disable              s, h        show, hide
//   r           editing is finished          a           run the checks
//   T text      the field's own tool tip     ?           ask for the errors
// After each, text, icon, tool tips and answer are those of a twin without any widget. Returns an empty text
// or what differs. Needs a QApplication.
std::string checkField(std::string_view script);
