#include "workbench/gui/look/FilterLine.hpp"

#include "workbench/gui/look/Icons.hpp"

#include <QKeyEvent>

namespace corvane::workbench::gui {

FilterLine::FilterLine(const QString& prompt, const QString& spoken, QWidget* parent)
    : QLineEdit(parent) {
    setPlaceholderText(prompt);
    setAccessibleName(spoken);
    setClearButtonEnabled(true);
    setAcceptDrops(false); // files are dropped on the window
    addAction(icon("filter"), QLineEdit::LeadingPosition);
    connect(this, &QLineEdit::returnPressed, this, &FilterLine::left);
}

void FilterLine::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Down)
        emit left();
    else
        QLineEdit::keyPressEvent(event);
}

} // namespace corvane::workbench::gui
