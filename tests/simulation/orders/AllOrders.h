#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vantrel::simulation {

/// Plays every order, depth first. Where a changed choice leaves the whole transcript and all later choices as they
/// were, what follows is not permuted again.
class AllOrders {
  public:
    using Choices = std::vector<std::size_t>;

    struct Played {
        std::string transcript;
        /// The number of alternatives at each choice, the given ones included.
        Choices alternatives;
    };
    /// Plays with these choices, and the natural ones after them.
    using Play = std::function<Played(const Choices&)>;

    struct Count {
        /// Played.
        std::size_t orders = 0;
        /// Different transcripts among them.
        std::size_t transcripts = 0;
        /// Orders after which nothing was permuted again.
        std::size_t reduced = 0;
        /// False if there are more orders than were allowed.
        bool complete = true;
    };

    AllOrders(Play play, std::size_t most) : play_(std::move(play)), most_(most) {}

    /// `judge` sees each transcript once, with the choices that led to it first.
    Count explore(const std::function<void(const Choices&, const std::string&)>& judge);

  private:
    /// What an order looks like from a choice on.
    using Rest = std::pair<std::string, Choices>;

    void explore(const Choices& choices, const Rest* parent);

    Play play_;
    std::size_t most_;
    std::function<void(const Choices&, const std::string&)> judge_;
    std::set<std::string> seen_;
    Count count_;
};

}  // namespace vantrel::simulation
