#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>

class QLabel;
class QProgressBar;

namespace corvane::workbench::gui {

/// Stands in for the project while a job has it: a picture of what was there, and after a second a
/// line that says what is being done.
class BusyPage : public QWidget {
    Q_OBJECT

public:
    explicit BusyPage(QWidget* parent);

    void begin(const QPixmap& before, const QString& title);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showProgress();

    QPixmap before_;
    QTimer patience_;
    QWidget* box_;
    QLabel* title_;
    QProgressBar* bar_;
};

} // namespace corvane::workbench::gui
