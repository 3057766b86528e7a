#pragma once

#include "workbench/gui/session/BusyRunner.hpp"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace corvane::workbench::gui {

/// Stands in for the project while a job has it: a picture of what was there, and after a second a
/// line that says what is being done, how much of it is done, and lets the user stop it, where that
/// is known and possible.
class BusyPage : public QWidget {
    Q_OBJECT

public:
    /// `runner` runs the jobs, and must outlive the page.
    BusyPage(BusyRunner& runner, QWidget* parent);

    void begin(const QPixmap& before, const QString& title);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showProgress();
    void showPercent();
    void stop();

    QPixmap before_;
    BusyRunner* runner_;
    QTimer patience_;
    QTimer progress_; // looks how far the job has come
    QWidget* box_;
    QLabel* title_;
    QProgressBar* bar_;
    QPushButton* stop_;
};

} // namespace corvane::workbench::gui
