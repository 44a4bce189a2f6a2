// The box that tells the user what went wrong.
#pragma once

class QString;

// Shows `text` in a modal critical box titled "Error notification", and returns when the user has closed it.
void showError(const QString &text);
