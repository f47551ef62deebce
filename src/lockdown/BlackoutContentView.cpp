#include "lockdown/BlackoutContentView.h"

namespace vantrel {

std::vector<OverlayLabel> BlackoutContentView::labels(const Size& size) {
    const double centreX = size.width * 0.5;
    const double centreY = size.height * 0.5;
    const auto label = [centreX, centreY](std::string text, double fontSize, bool bold, double whiteLevel,
                                          double above) {
        OverlayLabel made;
        made.text = std::move(text);
        made.fontSize = fontSize;
        made.bold = bold;
        made.whiteLevel = whiteLevel;
        made.centreX = centreX;
        made.y = centreY + above;
        return made;
    };
    auto notice =
        label("Lo schermo principale è bloccato sulla riunione Meet.\nQuesto monitor è temporaneamente disabilitato.",
              11, false, 0.37, -70);
    notice.fixedSize = {500, 40};
    return {label("🔒", 64, false, 0.47, 80), label("Vantrel", 28, true, 0.71, 20),
            label("Sessione di formazione protetta in corso", 13, false, 0.55, -10), std::move(notice)};
}

}  // namespace vantrel
