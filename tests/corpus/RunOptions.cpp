#include "tests/corpus/RunOptions.h"

#include <iterator>
#include <limits>

namespace {

constexpr double odd[] = {-0.0,
                          1e300,
                          -1e300,
                          1e-300,
                          5e-324,
                          1.0 / 3.0,
                          100.0,
                          360.0,
                          std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(),
                          std::numeric_limits<double>::quiet_NaN()};

// Takes bytes from the end; zeros when there are no more.
class LastBytes {
public:
    explicit LastBytes(std::string_view bytes)
        : m_rest(bytes)
    {}

    unsigned next()
    {
        if (m_rest.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(m_rest.back());
        m_rest.remove_suffix(1);
        return byte;
    }

    double nextValue()
    {
        constexpr unsigned ordinary = 256 - static_cast<unsigned>(std::size(odd));
        const unsigned byte = next();
        return byte < ordinary ? (static_cast<double>(byte) - 100.0) / 4.0 : odd[byte - ordinary];
    }

    plain::Axes nextAxes()
    {
        plain::Axes axes;
        axes.x = nextValue();
        axes.y = nextValue();
        axes.z = nextValue();
        return axes;
    }

private:
    std::string_view m_rest;
};

} // namespace

RunOptions::RunOptions(std::string_view bytes)
{
    LastBytes from(bytes);
    unsigned flags = from.next() << 8U;
    flags |= from.next();
    plain::Request &r = request;
    for (int *flag :
         {&r.rotateX, &r.rotateY, &r.rotateZ, &r.setLengthX, &r.setLengthY, &r.setLengthZ, &r.setOriginX,
          &r.setOriginY, &r.setOriginZ, &r.xSameY, &r.xSameZ, &r.ySameX, &r.ySameZ, &r.zSameX, &r.zSameY}) {
        *flag = static_cast<int>(flags & 1U);
        flags >>= 1U;
    }
    for (double *value : {&r.angleX, &r.angleY, &r.angleZ, &r.lengthX, &r.lengthY, &r.lengthZ})
        *value = from.nextValue();
    placement.scale = from.nextAxes();
    placement.offsetBefore = from.nextAxes();
    placement.offsetAfter = from.nextAxes();
}
