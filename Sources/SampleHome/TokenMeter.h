#pragma once

#include "SampleHome/Dialect.h"
#include "SampleHome/SampleHome.h"

#include <string>

namespace SampleHome {

/// The tokens that the messages of one conversation cost, as its context grows.
class TokenMeter {
public:
    explicit TokenMeter(Random& random);

    /// What the next message is billed. What it writes to the cache is read by all later ones.
    Tokens nextMessage(Random& random);

    /// True when the context is so large that it has to be summarised.
    [[nodiscard]] bool isFull() const { return context_ > limit_; }

    /// Starts again with the summary as the context.
    void compact(Random& random);

    /// Tokens of the context, all of which the next message reads.
    [[nodiscard]] std::uint64_t context() const { return context_; }

private:
    std::uint64_t context_;
    std::uint64_t limit_;
};

/// Appends the member "usage" with all that `era` has beside the four counts.
void putUsage(std::string& out, Era era, const Tokens& tokens);

} // namespace SampleHome
