#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vantrel::simulation {

/// One event of a transcript; the texts belong to the transcript.
struct Entry {
    std::size_t line;  // from 1
    std::int64_t at;   // milliseconds of uptime
    std::string_view kind;
    std::string_view text;
    std::span<const std::string_view> further;  // the lines below it, without their mark

    bool is(std::string_view theKind) const { return kind == theKind; }
    bool is(std::string_view theKind, std::string_view theText) const { return kind == theKind && text == theText; }
    bool begins(std::string_view theKind, std::string_view theBeginning) const {
        return kind == theKind && text.starts_with(theBeginning);
    }
};

}  // namespace vantrel::simulation
