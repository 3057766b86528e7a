#pragma once

#include "workbench/core/files/FileIdentity.hpp"

#include <QFileSystemWatcher>
#include <QTimer>

#include <filesystem>

namespace corvane::workbench::gui {

/// Tells when another program changes the project's file.
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent);

    /// Takes the file's present state for known, and watches it from now on; an empty path for
    /// none. To be called after each reading and writing.
    void watch(const std::filesystem::path& file);

    /// Whether the file is in another state than the known one.
    [[nodiscard]] bool isChanged() const;

signals:
    /// The file is in another state than the known one; told once per state.
    void changed();

private:
    void look();

    QFileSystemWatcher watcher_;
    QTimer settle_; // writers take several steps
    std::filesystem::path file_;
    core::FileIdentity known_;
    core::FileIdentity told_;
};

} // namespace corvane::workbench::gui
