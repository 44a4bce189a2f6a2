#include "tests/support/StandardErrorCapture.h"

#include "tests/support/TextFile.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

StandardErrorCapture::StandardErrorCapture()
    : m_before(dup(STDERR_FILENO)),
      m_collector(streamOf(""))
{
    std::fflush(stderr);
    if (m_before < 0 || dup2(fileno(m_collector.get()), STDERR_FILENO) < 0)
        throw std::system_error(errno, std::generic_category(), "standard error");
}

StandardErrorCapture::~StandardErrorCapture()
{
    std::fflush(stderr);
    dup2(m_before, STDERR_FILENO);
    close(m_before);
}

std::string StandardErrorCapture::text() const
{
    std::fflush(stderr);
    return bytesOf(m_collector);
}
