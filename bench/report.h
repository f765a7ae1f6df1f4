// What was measured, as lines for a reader: a name, two figures and what their ratio may be at most.
#pragma once

#include <functional>
#include <string>

namespace orvenmod::bench {

/// What this thread has computed, in milliseconds: the machine's other work doesn't count.
double threadMilliseconds();

/// The same of all its threads.
double processMilliseconds();

/// The clock on the wall, for work that others do as well.
double wallMilliseconds();

using Clock = std::function<double()>;

/// The least of several runs, in milliseconds of the clock.
double leastOf(int runs, const std::function<void()>& work, const Clock& clock = threadMilliseconds);

class Report {
public:
    void heading(const std::string& text);
    /// `ours` against `bound`, both in `unit`; the ratio may be at most `most`.
    void ratio(const std::string& name, double ours, const std::string& boundName, double bound, double most,
               const std::string& unit);
    void note(const std::string& text);

    bool kept() const { return kept_; }

private:
    bool kept_ = true;
};

}  // namespace orvenmod::bench
