#include "workbench/gui/look/PlainText.hpp"

#include <QLabel>

namespace corvane::workbench::gui {

QLabel* plainLabel(QWidget* parent, const QString& text) {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

QString withoutMnemonic(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// Most texts hold no tag and stay what they were.
QString withoutFormat(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString withoutModifiedMark(QString text) {
    return text.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

} // namespace corvane::workbench::gui
