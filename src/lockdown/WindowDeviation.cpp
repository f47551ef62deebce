#include "lockdown/WindowDeviation.h"

#include <cmath>

namespace vantrel {
namespace {

constexpr double toleratedMove = 0.01;
constexpr double smallestWidthRatio = 0.9;
constexpr double smallestHeightRatio = 0.8;

}  // namespace

WindowDeviation windowDeviation(const Rect& window, const Rect& screen) {
    WindowDeviation deviation;
    deviation.widthRatio = window.size.width / screen.size.width;
    deviation.heightRatio = window.size.height / screen.size.height;
    deviation.moved = std::abs(window.origin.x - screen.origin.x) > toleratedMove * screen.size.width ||
                      std::abs(window.origin.y - screen.origin.y) > toleratedMove * screen.size.height;
    deviation.sizeCorrect = deviation.widthRatio >= smallestWidthRatio && deviation.heightRatio >= smallestHeightRatio;
    return deviation;
}

}  // namespace vantrel
