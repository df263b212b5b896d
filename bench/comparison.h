#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

/// How long `work` takes, in seconds.
template <typename Work>
double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// What something costs, held against a base. The two are measured in turn, so that whatever else the machine does
/// meets both, and their medians compared.
class Comparison
{
public:
    template <typename Work, typename Base>
    void measure(Work work, Base base)
    {
        add(secondsOf(work), secondsOf(base));
    }
    void add(double seconds, double baseSeconds)
    {
        costs.push_back(seconds);
        bases.push_back(baseSeconds);
    }

    double cost() const { return median(costs); }
    double base() const { return median(bases); }
    double ratio() const { return cost() / base(); }

private:
    std::vector<double> costs, bases;
};

/// Prints a line "ratio NAME value limit"; whether the limit holds.
inline bool isWithin(const char *name, double ratio, double limit)
{
    std::printf("ratio %s %.3f %.2f\n", name, ratio, limit);
    return ratio <= limit;
}
