// Recent points and what was worked out for them.
//
// A corner of a closed mesh belongs to about six facets, most of them near each other in the file. Finding a
// corner again costs a tenth of converting its three numbers. A memory answers only to exactly the same bytes
// that it was given before, so it cannot change a result: what is worked out for a point may depend on
// nothing but its bytes and what stays the same for the memory's whole life, which is that of one pass.
#pragma once

#include "stl/StlCommonFacet.h"
#include "stl/StlMesh.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

namespace stl_point_memory {

constexpr std::uint64_t oddFactor1 = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t oddFactor2 = 0xC2B2AE3D27D4EB4FU;

// In the order of the machine's bytes, since the words are only compared and hashed.
inline std::uint64_t wordAt(const char *bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline std::uint64_t rotated(std::uint64_t word, unsigned bits)
{
    return word << bits | word >> (64U - bits);
}

// From the upper bits of products, which depend on all bits of the factors.
template <unsigned bits>
std::uint64_t slotNumber(std::uint64_t a, std::uint64_t b)
{
    return (a * oddFactor1 + b * oddFactor2) >> (64U - bits);
}

template <typename Key, typename Value>
struct Slot {
    Key key;
    Value value;

    void copyTo(void *out) const
    {
        if constexpr (!std::is_empty_v<Value>)
            std::memcpy(out, &value, sizeof value);
    }

    template <typename Point>
    void assign(const Point &point, const void *from)
    {
        if constexpr (!std::is_empty_v<Value>)
            std::memcpy(&value, from, sizeof value);
        key.assign(point);
    }
};

} // namespace stl_point_memory

// A point by its text in the common form, the line feed included. Keys of zeros equal no such text.
struct StlPointText {
    static constexpr std::size_t words = stlCommonPointSize / sizeof(std::uint64_t);
    static_assert(words * sizeof(std::uint64_t) == stlCommonPointSize, "a point fills whole words");

    std::uint64_t text[words];

    // `point` ends with a line feed.
    bool equals(const char *point) const
    {
        std::uint64_t difference = 0;
        for (std::size_t i = 0; i < words; ++i)
            difference |= text[i] ^ stl_point_memory::wordAt(point + i * sizeof(std::uint64_t));
        return difference == 0;
    }
    void assign(const char *point) { std::memcpy(text, point, sizeof text); }

    template <unsigned bits>
    static std::uint64_t slotOf(const char *point)
    {
        using namespace stl_point_memory;
        const auto word = [point](std::size_t i) { return wordAt(point + i * sizeof(std::uint64_t)); };
        return slotNumber<bits>(word(0) ^ rotated(word(2), 21) ^ rotated(word(4), 42),
                                word(1) ^ rotated(word(3), 21) ^ rotated(word(5), 42));
    }
};

// A point by the bits of its coordinates: the zeros differ, and a NaN equals itself. Keys of zeros equal no
// point, for `z` has one bit more.
struct StlPointBits {
    std::uint64_t xy;
    std::uint64_t z;

    bool equals(const StlVertex &point) const { return ((xy ^ xyOf(point)) | (z ^ zOf(point))) == 0; }
    void assign(const StlVertex &point)
    {
        xy = xyOf(point);
        z = zOf(point);
    }

    template <unsigned bits>
    static std::uint64_t slotOf(const StlVertex &point)
    {
        return stl_point_memory::slotNumber<bits>(xyOf(point), zOf(point));
    }

private:
    static std::uint64_t xyOf(const StlVertex &point)
    {
        static_assert(sizeof(StlVertex) == 12, "three floats");
        std::uint64_t bits = 0;
        std::memcpy(&bits, &point, sizeof bits);
        return bits;
    }
    static std::uint64_t zOf(const StlVertex &point)
    {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &point.z, sizeof bits);
        return std::uint64_t{1} << 32U | bits;
    }
};

// One slot for each hash value; a point replaces the one before in its slot. Where fewer than a quarter of a
// sample of points are found, it rests for some thousands of points and costs next to nothing.
template <typename Key, typename Value, unsigned slotBits = 9>
class StlPointMemory {
public:
    StlPointMemory()
        : m_slots(new Slot[std::size_t{1} << slotBits]())
    {}

    // Sets *out to what make() works out for the point, now or earlier; make() sets *out. False if make()
    // declines by returning false; ignore *out then.
    template <typename Point, typename Out, typename Make>
    bool findOrMake(const Point &point, Out *out, Make &&make)
    {
        Slot *slot = nullptr; // while it rests
        if (m_rest > 0) {
            --m_rest;
        } else {
            slot = m_slots.get() + Key::template slotOf<slotBits>(point);
            const bool found = slot->key.equals(point);
            count(found);
            if (found) {
                slot->copyTo(out);
                return true;
            }
        }
        if (!make())
            return false;
        if (slot != nullptr)
            slot->assign(point, out);
        return true;
    }

private:
    static constexpr int sampleSize = 768;
    static constexpr int restSize = 31 * sampleSize;

    using Slot = stl_point_memory::Slot<Key, Value>;

    void count(bool found)
    {
        m_found += static_cast<int>(found);
        if (++m_asked == sampleSize) {
            if (m_found < sampleSize / 4)
                m_rest = restSize;
            m_asked = 0;
            m_found = 0;
        }
    }

    std::unique_ptr<Slot[]> m_slots;
    int m_asked = 0;
    int m_found = 0;
    int m_rest = 0;
};

// The same for the latest point only.
template <typename Key, typename Value>
class StlLastPoint {
public:
    template <typename Point, typename Out, typename Make>
    bool findOrMake(const Point &point, Out *out, Make &&make)
    {
        if (m_slot.key.equals(point)) {
            m_slot.copyTo(out);
            return true;
        }
        if (!make())
            return false;
        m_slot.assign(point, out);
        return true;
    }

private:
    stl_point_memory::Slot<Key, Value> m_slot{};
};
