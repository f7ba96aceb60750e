#pragma once

class QPlainTextEdit;
class QTextEdit;

namespace burnwick {

// From now on a selection in this box cannot be dragged. A drag has an event loop of its own, in which no
// block of a run is sent: the unit would wait, and give up.
void ForbidTextDrag(QPlainTextEdit& box);
void ForbidTextDrag(QTextEdit& box);

}  // namespace burnwick
