#include "tests/simulation/model/Mistakes.h"

#include <array>
#include <cstdio>
#include <vector>

#include "tests/simulation/model/acts/Part.h"
#include "tests/simulation/model/reading/Transcript.h"

namespace vantrel::simulation {
namespace {

struct Block {
    Part part = Part::world;
    bool meant = false;  // the client's own, or for it to act upon
    std::int64_t at = 0;
    std::string first;
    std::string further;
};

std::vector<Block> blocksOf(const std::string& text) {
    const Transcript transcript(text);
    std::vector<Block> blocks;
    std::size_t begins = 0;
    std::size_t line = 1;
    for (const Entry& entry : transcript.entries()) {
        const auto next = [&] {
            const std::size_t end = text.find('\n', begins);
            std::string whole = text.substr(begins, end - begins + 1);
            begins = end + 1;
            ++line;
            return whole;
        };
        Block block{.part = partOf(entry), .at = entry.at, .first = next(), .further = {}};
        for (std::size_t index = 0; index < entry.further.size(); ++index) block.further += next();
        block.meant = block.part != Part::world || entry.is("reply") || entry.is("key");
        blocks.push_back(std::move(block));
    }
    return blocks;
}

std::string joined(const std::vector<Block>& blocks) {
    std::string text;
    for (const Block& block : blocks) text += block.first + block.further;
    return text;
}

class Maker {
  public:
    Maker(const std::string& transcript, std::mt19937& random) : blocks_(blocksOf(transcript)), random_(random) {}

    std::optional<Mistake> make() {
        std::vector<std::size_t> meant;
        for (std::size_t index = 0; index < blocks_.size(); ++index) {
            if (blocks_[index].meant) meant.push_back(index);
        }
        if (meant.empty()) return std::nullopt;
        at_ = meant[draw(meant.size())];
        Mistake mistake{.kind = {}, .what = blocks_[at_].first, .transcript = {}};
        constexpr std::array kinds{&Maker::drop,     &Maker::repeat, &Maker::exchange, &Maker::move,
                                   &Maker::renumber, &Maker::retime, &Maker::respell};
        constexpr std::array names{"a line is dropped", "a line is repeated", "two lines are exchanged",
                                   "a line is moved",   "another number",     "another time",
                                   "another letter"};
        const std::size_t kind = draw(kinds.size());
        mistake.kind = names[kind];
        if (!(this->*kinds[kind])()) return std::nullopt;
        mistake.transcript = joined(blocks_);
        return mistake;
    }

  private:
    std::size_t draw(std::size_t count) { return random_() % count; }

    bool drop() {
        blocks_.erase(place(at_));
        return true;
    }
    bool repeat() {
        blocks_.insert(place(at_), Block(blocks_[at_]));
        return true;
    }
    /// Lines of different threads at one moment have no order.
    bool exchange() {
        if (at_ + 1 == blocks_.size()) return false;
        Block& one = blocks_[at_];
        Block& other = blocks_[at_ + 1];
        if (one.part != other.part || one.part == Part::world) return false;
        if (one.first == other.first && one.further == other.further) return false;
        std::swap(one, other);
        return true;
    }
    bool move() {
        const std::size_t to = at_ + 3 + draw(8);
        if (to >= blocks_.size()) return false;
        bool crosses = false;
        for (std::size_t index = at_ + 1; index <= to; ++index) {
            crosses =
                crosses || (blocks_[index].part == blocks_[at_].part && blocks_[index].first != blocks_[at_].first);
        }
        if (!crosses || blocks_[at_].part == Part::world) return false;
        Block block = blocks_[at_];
        setTime(block, blocks_[to].at);
        blocks_.insert(place(to + 1), block);
        blocks_.erase(place(at_));
        return true;
    }
    bool renumber() {
        return replace([](char character) { return character >= '0' && character <= '9'; },
                       [this](char digit) { return static_cast<char>('0' + (digit - '0' + 1 + draw(9)) % 10); });
    }
    bool respell() {
        return replace([](char character) { return character >= 'a' && character <= 'z'; },
                       [this](char letter) { return static_cast<char>('a' + (letter - 'a' + 1 + draw(25)) % 26); });
    }
    bool retime() {
        constexpr std::array<std::int64_t, 6> shifts{1, -1, 50, -50, 500, 1500};
        const std::int64_t to = blocks_[at_].at + shifts[draw(shifts.size())];
        if (to < 0) return false;
        setTime(blocks_[at_], to);
        return true;
    }

    /// In the text of an entry, or in the body of a request.
    template <typename Fits, typename Change>
    bool replace(Fits fits, Change change) {
        constexpr std::size_t textBegins = 24;
        Block& block = blocks_[at_];
        const bool body =
            block.first.find("  request  ") != std::string::npos && !block.further.empty() && draw(2) == 0;
        if (block.first.find("  reply  ") != std::string::npos) return false;
        std::string& text = body ? block.further : block.first;
        std::vector<std::size_t> places;
        for (std::size_t index = textBegins; index < text.size(); ++index) {
            if (fits(text[index])) places.push_back(index);
        }
        if (places.empty()) return false;
        char& character = text[places[draw(places.size())]];
        character = change(character);
        return true;
    }

    static void setTime(Block& block, std::int64_t at) {
        std::array<char, 32> time{};
        std::snprintf(time.data(), time.size(), "%5d.%03d", static_cast<int>(at / 1000), static_cast<int>(at % 1000));
        block.first.replace(0, 9, time.data());
        block.at = at;
    }
    std::vector<Block>::iterator place(std::size_t index) {
        return blocks_.begin() + static_cast<std::ptrdiff_t>(index);
    }

    std::vector<Block> blocks_;
    std::mt19937& random_;
    std::size_t at_ = 0;
};

}  // namespace

std::optional<Mistake> makeMistake(const std::string& transcript, std::mt19937& random) {
    return Maker(transcript, random).make();
}

}  // namespace vantrel::simulation
