// What must hold after any sequence of actions on a LineEditCustom.
#pragma once

#include <string>
#include <string_view>

// Each line is an action; its first character says which:
//   t text      enter the text               p number    add the policy
//   n name      the field's name             N name      the same in bold
//   v number    forbid the value             V number    forbid only this value
//   u a,b       the names already used       c a,b       the forbidden characters
//   < number    the minimum                  > number    the maximum
//   e, d        enable, disable              s, h        show, hide
//   r           editing is finished          a           run the checks
//   T text      the field's own tool tip     ?           ask for the errors
// After each action, the text, the icon, the tool tips and the answer must equal those of a plain twin
// without widgets. Returns what differs, or an empty text. Needs a QApplication.
std::string checkField(std::string_view script);
