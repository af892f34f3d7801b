#pragma once

#include <cstdint>

#include "UsageModel/Fields.h"

namespace UsageModel {

/// How far an import of the logs has come, in bytes of logs.
struct IngestProgress {
    std::int64_t bytesDone = 0;
    std::int64_t bytesTotal = 0;
    bool complete = false;

    /// No import under way.
    [[nodiscard]] static constexpr IngestProgress idle() { return {.complete = true}; }

    /// The share that is done, at most 1. Without any bytes to do: 1 when complete, else 0.
    [[nodiscard]] double fraction() const;

    friend bool operator==(const IngestProgress&, const IngestProgress&) = default;
};

template <FieldsOf<IngestProgress> Self>
void visitFields(Self& self, auto&& visit) {
    visit("bytesDone", self.bytesDone);
    visit("bytesTotal", self.bytesTotal);
    visit("complete", self.complete);
}

} // namespace UsageModel
