// Names are in the active code page, which the program's manifest sets to UTF-8.
#include "cli/FileNames.h"
#include "cli/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <direct.h>
#include <random>
#include <windows.h>

// The command prompt leaves a pattern such as *.stl as it is. This makes the start-up code of mingw-w64 put
// the names of the files in its place.
extern "C" {
int _dowildcard = -1;
}

namespace {

constexpr DWORD longestTidying = 2000; // milliseconds
constexpr int longestGapOfHandles = 500;
constexpr auto endedOnRequest = static_cast<UINT>(STATUS_CONTROL_C_EXIT);

void (*tidyUpBeforeEnd)() = nullptr;

HANDLE mainThread = nullptr;
SRWLOCK endHeldBack = SRWLOCK_INIT;

// Windows removes no open file, and a stopped thread cannot close its own. Handles are small multiples of
// four.
void closeAllFiles()
{
    int unused = 0;
    for (std::uintptr_t value = 4; unused < longestGapOfHandles; value += 4) {
        const auto handle = reinterpret_cast<HANDLE>(value);
        DWORD flags = 0;
        unused = GetHandleInformation(handle, &flags) != 0 ? 0 : unused + 1;
        if (unused == 0 && GetFileType(handle) == FILE_TYPE_DISK)
            CloseHandle(handle);
    }
}

// The main thread is stopped where it is, but not while it holds what removing files needs.
DWORD WINAPI tidyUpAndEnd(void *)
{
    AcquireSRWLockExclusive(&endHeldBack);
    HeapLock(GetProcessHeap());
    SuspendThread(mainThread);
    CONTEXT context{};
    context.ContextFlags = CONTEXT_CONTROL;
    GetThreadContext(mainThread, &context); // returns when it has stopped
    closeAllFiles();
    tidyUpBeforeEnd();
    TerminateProcess(GetCurrentProcess(), endedOnRequest);
    return 0;
}

// Called in a thread of its own. Whatever keeps the other from its work must not keep the process alive.
BOOL WINAPI endOnRequest(DWORD)
{
    const HANDLE tidying = CreateThread(nullptr, 0, tidyUpAndEnd, nullptr, 0, nullptr);
    if (tidying != nullptr)
        WaitForSingleObject(tidying, longestTidying);
    TerminateProcess(GetCurrentProcess(), endedOnRequest);
    return TRUE;
}

void tidyUpAtExit()
{
    _fcloseall(); // all but the standard streams
    tidyUpBeforeEnd();
}

} // namespace

bool makeNewFolder(std::string &path)
{
    constexpr char letters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> any(0, sizeof letters - 2);
    for (int tries = 0; tries < 1000; ++tries) {
        std::generate(path.end() - 6, path.end(), [&] { return letters[any(random)]; });
        if (_mkdir(path.c_str()) == 0)
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

void removeFile(const char *file)
{
    if (DeleteFileA(file) != 0 || GetLastError() != ERROR_ACCESS_DENIED)
        return;
    // It may be read-only, like the file that it was to replace.
    SetFileAttributesA(file, FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(file);
}

void removeEmptyFolder(const char *folder)
{
    if (RemoveDirectoryA(folder) != 0 || GetLastError() != ERROR_SHARING_VIOLATION)
        return;
    SetCurrentDirectoryA("..");
    RemoveDirectoryA(folder);
}

void callAtTheEnd(void (*tidyUp)())
{
    tidyUpBeforeEnd = tidyUp;
    std::atexit(tidyUpAtExit);
    if (DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &mainThread, 0, FALSE,
                        DUPLICATE_SAME_ACCESS) != 0)
        SetConsoleCtrlHandler(endOnRequest, TRUE);
}

EndHeldBack::EndHeldBack() { AcquireSRWLockExclusive(&endHeldBack); }

EndHeldBack::~EndHeldBack() { ReleaseSRWLockExclusive(&endHeldBack); }

bool standardErrorIsTerminal()
{
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(error, &mode) != 0 &&
           SetConsoleMode(error, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool isSamePlace(const std::string &place, const std::string &other)
{
    const auto written = [](const std::string &name) { return pathOf(name).make_preferred().wstring(); };
    return CompareStringOrdinal(written(place).c_str(), -1, written(other).c_str(), -1, TRUE) == CSTR_EQUAL;
}
