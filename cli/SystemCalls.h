// What the command asks of the system itself, beyond files and folders of the C++ library. Everything that
// differs from system to system is in here: SystemCallsPosix.cpp or SystemCallsWindows.cpp.
#pragma once

#include <string>

// Makes a folder that did not exist: the six X at the end of `path` become other characters. False, with
// errno set, if there can be none.
bool makeNewFolder(std::string &path);

// Both keep quiet about failures and take no memory: they are called while a process is being ended. A folder
// that cannot be removed because it is the current one is left first.
void removeFile(const char *file);
void removeEmptyFolder(const char *folder);

// Calls `tidyUp` when the process ends by exit() or on request. A request is a signal: from a user, of a pipe
// without a reader, or of processor time used up; on Windows, the keys or the closing of the console. The end
// is the same as without it, and requests that the process was started to ignore stay ignored. To be called
// once, by the only thread. A file that grows beyond the limit of the system is a failed write from now on,
// and not the end.
void callAtTheEnd(void (*tidyUp)());

// While it lives the process is not ended on request. There may be one at a time.
class EndHeldBack {
public:
    EndHeldBack();
    ~EndHeldBack();
    EndHeldBack(const EndHeldBack &) = delete;
    EndHeldBack &operator=(const EndHeldBack &) = delete;
};

// Whether standard error goes to a terminal that obeys escape sequences.
bool standardErrorIsTerminal();

// Whether two absolute names, links followed, are those of one file, which need not exist.
bool isSamePlace(const std::string &place, const std::string &other);
