#include "platform/linux/ui/Responder.h"

#include <QApplication>
#include <QLineEdit>
#include <utility>

namespace vantrel::linuxdesktop {

void Responder::setTerminate(Block terminate) {
    terminate_ = std::move(terminate);
}

void Responder::perform(const std::string& action) const {
    if (action == "terminate:") {
        if (terminate_) terminate_();
        return;
    }
    auto* field = dynamic_cast<QLineEdit*>(QApplication::focusWidget());
    if (field == nullptr) return;
    if (action == "undo" || action == "undo:") field->undo();
    if (action == "redo" || action == "redo:") field->redo();
    if (action == "cut:") field->cut();
    if (action == "copy:") field->copy();
    if (action == "paste:") field->paste();
    if (action == "selectAll:") field->selectAll();
}

}  // namespace vantrel::linuxdesktop
