// Paths as text.
#pragma once

#include <QString>

// What follows the last "/", or all of it.
inline QString lastPathPart(const QString &path) { return path.mid(path.lastIndexOf('/') + 1); }
