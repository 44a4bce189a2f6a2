// What a LineEditCustom can be told to check or to do.
#pragma once

enum LineEditPolicy {
    PolicyNone = 0, // addPolicy(PolicyNone) empties the list
    PolicyNumber = 1,
    PolicyRequired = 2,
    PolicyUniqueName = 3,
    PolicyUniqueNameNoCase = 4,
    PolicyInvalidCharacters = 5,
    PolicyInvalidValues = 6,
    PolicyKeepFullPath = 7, // the file dialogs look for it, but addPolicy refuses it
    PolicyDirectoryExists = 8,
    PolicyFileExists = 9,
    PolicyParentDirectoryExists = 10,
    PolicyRoundToInteger = 11,
    PolicyMinimum = 12,
    PolicyMaximum = 13
};
