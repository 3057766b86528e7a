#pragma once

#include <QFrame>

#include <cstdint>
#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;
class QToolButton;

namespace corvane::workbench::gui {

/// Tells what went wrong, what came in or what has to be decided, on a strip that lies upon the
/// project: nothing moves when it comes or goes. A question stays beneath what is told later, until
/// it is settled; everything else is the last thing that was told. It never stops the user.
class NoticeBar : public QFrame {
    Q_OBJECT

public:
    enum class Kind : std::uint8_t {
        information, // of the last step
        refusal,     // why the last step was not taken
        warning,     // came with the last step, and stays until it is closed
        error,
        question,
    };

    /// Lies upon the lower edge of `place`, which stands below the bar's own parent.
    NoticeBar(QWidget& place, QWidget* parent);

    /// Shows a text as it is.
    void showNotice(Kind kind, const QString& text);

    enum class AfterChoice : std::uint8_t { close, stay };
    /// Adds a button to the notice that was shown last, which closes when the button is pressed, or
    /// stays.
    void addChoice(const QString& text, std::function<void()> chosen,
                   AfterChoice after = AfterChoice::close);

    /// Takes away everything.
    void clear();
    /// Takes away what was told of the last step; of an import its warnings stay.
    void clearLastStep();
    /// Likewise with warnings, as that step is undone or redone.
    void clearLastStepAndWarning();

    /// What is shown; empty for nothing.
    [[nodiscard]] QString text() const;
    [[nodiscard]] Kind kind() const { return shown_.kind; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Choice {
        QString text;
        std::function<void()> chosen;
        AfterChoice after;
    };
    struct Notice {
        Kind kind = Kind::information;
        QString text;
        std::vector<Choice> choices;
    };

    void present(const Notice& notice);
    void addButton(const Choice& choice);
    void dismiss();
    void dropButtons();
    void showPicture();
    void takePlace();

    QWidget* place_;
    Notice question_; // without a text where there is none
    Notice shown_;    // the question, or what was told later
    QLabel* picture_;
    QLabel* text_;
    QHBoxLayout* buttons_;
    QToolButton* close_;
};

} // namespace corvane::workbench::gui
