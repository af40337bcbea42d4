#pragma once

#include <QString>
#include <QStringList>

namespace quorva::gui {

class ThreadedInterface;

/// Opens each window and dialog on the current working folder and saves one PNG of each
/// into `folder`; writes nothing into the working folder. The files written.
QStringList take_screenshots(const QString& folder, ThreadedInterface& port);

}  // namespace quorva::gui
