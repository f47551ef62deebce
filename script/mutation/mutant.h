#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <initializer_list>
#include <type_traits>

/// What the instrumented copies of the rules ask: whether a mutant was chosen. At most one is, by its number in
/// VANTREL_MUTANT. Nothing here is a constant expression, or the compiler would answer by itself.
namespace mutation {

/// With VANTREL_MUTANTS_REACHED, that file gets a byte for each mutant that was asked for. It is shared memory, so it
/// also tells of a process that was aborted.
class Choice {
  public:
    static constexpr int largestNumber = 1 << 16;

    static const Choice& instance() {
        static const Choice choice;
        return choice;
    }

    bool isChosen(int number) const {
        if (reached_ != nullptr) reached_[number] = 1;
        return number == chosen_;
    }

  private:
    Choice() {
        if (const char* number = std::getenv("VANTREL_MUTANT")) chosen_ = std::atoi(number);
        const char* name = std::getenv("VANTREL_MUTANTS_REACHED");
        if (name == nullptr) return;
        const int file = open(name, O_RDWR | O_CREAT, 0644);
        if (file < 0 || ftruncate(file, largestNumber) != 0) std::abort();
        void* bytes = mmap(nullptr, largestNumber, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (bytes == MAP_FAILED) std::abort();
        close(file);
        reached_ = static_cast<volatile char*>(bytes);
    }

    int chosen_ = 0;
    volatile char* reached_ = nullptr;
};

inline bool mutant(int number) {
    return Choice::instance().isChosen(number);
}

/// A condition that holds a declaration, forced to be true or false.
inline bool forced(int whenTrue, int whenFalse, bool value) {
    return mutant(whenTrue) || (!mutant(whenFalse) && value);
}

/// The number of the mutant that leaves a case out.
template <typename Value>
struct Case {
    int number;
    Value value;
};

/// What a switch looks at: a value without a case, if the chosen mutant leaves out the case of this one.
template <typename Value>
Value switched(Value value, std::initializer_list<Case<Value>> cases) {
    for (const auto& each : cases) {
        if (mutant(each.number) && each.value == value) return static_cast<Value>(0x5A5A5A5A);
    }
    return value;
}

}  // namespace mutation
