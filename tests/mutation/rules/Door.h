#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A small module of rules for the tests of script/mutate. Its tests leave on purpose what mutation_test.py names.
namespace door {

enum class Light { green, red, off };

/// Lets in who has a ticket, until the house is full.
class Door {
  public:
    static constexpr int places = 2;

    explicit Door(std::shared_ptr<std::vector<std::string>> log) : log_(log) {}

    bool enter(std::string_view ticket);
    int inside() const { return inside_; }
    Light light() const;

  private:
    void print(std::string_view line);

    std::weak_ptr<std::vector<std::string>> log_;
    int inside_ = 0;
};

/// The light's name; empty if it is off.
std::string_view name(Light light);

/// How many people a number of coins pays for.
int paidFor(int coins);

}  // namespace door
