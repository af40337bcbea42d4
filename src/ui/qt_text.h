#pragma once

#include <QString>
#include <optional>
#include <string>

namespace quorva::gui {

// The one crossing between the window's text (QString) and the files' ISO-8859-1 bytes.

/// Text of the files and of the core's messages, for a widget.
QString to_qt(const std::string& latin1);
/// What the person typed, for the core; a character outside ISO-8859-1 is refused with the
/// core's message (shown through the port) and gives nullopt.
std::optional<std::string> from_qt(const QString& text);

}  // namespace quorva::gui
