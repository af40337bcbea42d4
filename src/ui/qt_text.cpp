#include "ui/qt_text.h"

#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::gui {

QString to_qt(const std::string& latin1) {
  return QString::fromLatin1(latin1.data(), static_cast<qsizetype>(latin1.size()));
}

std::optional<std::string> from_qt(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  Latin1Result converted = utf8_to_latin1(std::string_view(utf8.constData(), utf8.size()));
  if (!converted.text) Mostra_popup(converted.message);
  return converted.text;
}

}  // namespace quorva::gui
