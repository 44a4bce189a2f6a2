// Makes the n-th operation of a kind fail. The program that links this gets all its streams from here: the
// linker hands it every call of fopen and calloc, and operator new is its own. A failing stream is a real
// one with a failing device behind it, so everything built on it (fgets, fscanf, fwrite, fclose, ferror)
// behaves as on a failing disc. Streams are given tiny buffers, so that a small file has many operations.
#pragma once

enum class FaultPoint { open, read, write, seek, close, callocate, allocate };
constexpr int faultPointCount = 7;

// From now on operations are counted, and the n-th one at this point (1 is the first) fails with this error;
// if lasting, all after it fail, too. A stream fails whatever it was opened for.
void armFault(FaultPoint point, long n, int error, bool lasting);
void disarmFaults();

// The operations counted since the last arming, of one kind.
long operationsAt(FaultPoint point);

// Arms nothing but counts.
void countOperations();

// Neither counts nor fails while it lives.
class FaultsPaused {
public:
    FaultsPaused();
    ~FaultsPaused();
    FaultsPaused(const FaultsPaused &) = delete;
    FaultsPaused &operator=(const FaultsPaused &) = delete;

private:
    bool m_before;
};
