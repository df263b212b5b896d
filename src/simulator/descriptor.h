#pragma once

#include <unistd.h>
#include <utility>

/// Owns a file descriptor and closes it.
class Descriptor
{
public:
    explicit Descriptor(int descriptor = -1) : number(descriptor) {}
    Descriptor(Descriptor &&other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (number >= 0) ::close(number);
    }

    int get() const { return number; }

private:
    int number;
};
