// The policies that a LineEditCustom can carry.
#pragma once

enum LineEditPolicy {
    PolicyNone = 0, // addPolicy(PolicyNone) empties the list
    PolicyNumber = 1,
    PolicyRequired = 2,
    PolicyUniqueName = 3,
    PolicyUniqueNameNoCase = 4,
    PolicyInvalidCharacters = 5,
    PolicyInvalidValues = 6,
    PolicyKeepFullPath = 7, // known to the file dialogs, but addPolicy refuses it
    PolicyDirectoryExists = 8,
    PolicyFileExists = 9,
    PolicyParentDirectoryExists = 10,
    PolicyRoundToInteger = 11,
    PolicyMinimum = 12,
    PolicyMaximum = 13
};
