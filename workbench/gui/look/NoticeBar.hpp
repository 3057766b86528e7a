#pragma once

#include <QFrame>

#include <functional>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace corvane::workbench::gui {

/// A line above the project that tells what went wrong, what came in or what has to be decided. It
/// stays until it is closed or another takes its place, and never stops the user.
class NoticeBar : public QFrame {
    Q_OBJECT

public:
    enum class Kind { information, error, question };

    explicit NoticeBar(QWidget* parent);

    /// Shows a text as it is.
    void showNotice(Kind kind, const QString& text);

    /// Adds a button to the present notice, which goes when the button is pressed.
    void addChoice(const QString& text, std::function<void()> chosen);

    void clear();
    /// Takes away an information; errors and questions stay until the user has closed them.
    void clearInformation();

    [[nodiscard]] QString text() const;
    [[nodiscard]] Kind kind() const { return kind_; }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void dropChoices();
    void showPicture();

    Kind kind_ = Kind::information;
    QLabel* picture_;
    QLabel* text_;
    QHBoxLayout* choices_;
    QToolButton* close_;
};

} // namespace corvane::workbench::gui
