#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/system/UserDefaults.h"
#include "platform/ui/Window.h"

namespace vantrel {

/// The screen where the participant enters what the trainer has handed out. Main thread.
class JoinScreen {
  public:
    static constexpr std::string_view viewId = "joinView";
    static constexpr std::string_view serverUrlField = "serverUrlField";
    static constexpr std::string_view sessionCodeField = "sessionCodeField";
    static constexpr std::string_view fullNameField = "fullNameField";
    static constexpr std::string_view emailField = "emailField";
    static constexpr std::string_view errorLabel = "errorLabel";
    static constexpr std::string_view joinButton = "joinButton";

    static constexpr std::string_view fullNameKey = "vt_fullName";
    static constexpr std::string_view emailKey = "vt_email";

    /// The participant's input, trimmed.
    struct Input {
        std::string serverAddress;
        std::string sessionCode;
        std::string fullName;
        std::string email;
    };

    static View view(const Rect& frame, const std::string& clientVersion);

    JoinScreen(Window& window, UserDefaults& defaults) : window_(window), defaults_(defaults) {}

    /// Puts the saved values into the fields and empties the session code.
    void fill();

    /// The input, or the text that tells the participant what is missing.
    std::variant<Input, std::string> read() const;

    /// Saves everything but the session code for the next time.
    void save(const Input& input);

    /// The current text of the server field, saved or not.
    std::string serverFieldText() const;

    void showStatus(std::string_view text);
    void setJoinEnabled(bool enabled);
    void setHidden(bool hidden);

  private:
    std::string trimmedField(std::string_view id) const;

    Window& window_;
    UserDefaults& defaults_;
};

}  // namespace vantrel
