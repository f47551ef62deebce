#pragma once

#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::rehearsal {

/// Writes what happened, one entry after another:
///
///      3.040  log          [SESSION] GET status HTTP: 200
///
/// The seconds have three decimals in nine columns, then two spaces, the kind in eleven columns, two spaces, the text.
/// Further lines of an entry begin under its text with "| ", an empty one with "|" alone. Any thread.
class Transcript {
  public:
    /// The stream must outlive the transcript.
    explicit Transcript(std::ostream& stream) : stream_(stream) {}

    /// `text` and `more` may contain line breaks. They are printed with printable().
    void add(double seconds, std::string_view kind, std::string_view text, const std::vector<std::string>& more = {});

    /// Adds entries in their final form.
    void addLines(std::string_view lines);

    /// From now on entries are held back.
    void hold();
    /// The entries held back. From now on entries are written again.
    std::string takeHeld();

  private:
    std::mutex mutex_;
    std::ostream& stream_;
    std::optional<std::string> held_;
};

}  // namespace vantrel::rehearsal
