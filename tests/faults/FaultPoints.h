// Makes the n-th operation of a kind fail. A program that links this gets its streams from here: the linker
// redirects every call of fopen and calloc, and operator new is defined here. A failing stream is a real
// stream on a failing device, so everything built on it (fgets, fscanf, fwrite, fclose, ferror) behaves as on
// a failing disk. Streams have tiny buffers, so that a small file takes many operations.
#pragma once

enum class FaultPoint { open, read, write, seek, close, callocate, allocate };
constexpr int faultPointCount = 7;

// Starts counting: the n-th operation at this point (1 is the first) fails with this error, and if lasting,
// all later ones fail, too. Streams of all files are counted together.
void armFault(FaultPoint point, long n, int error, bool lasting);
void disarmFaults();

// How many operations at this point were counted since the last arming.
long operationsAt(FaultPoint point);

// Only counts.
void countOperations();

// While one lives, nothing is counted and nothing fails.
class FaultsPaused {
public:
    FaultsPaused();
    ~FaultsPaused();
    FaultsPaused(const FaultsPaused &) = delete;
    FaultsPaused &operator=(const FaultsPaused &) = delete;

private:
    bool m_before;
};
