#pragma once

#include "workbench/core/files/FileIdentity.hpp"

#include <QFileSystemWatcher>
#include <QTimer>

#include <filesystem>
#include <optional>

namespace corvane::workbench::gui {

/// Tells when another program changes the project's file.
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent);

    /// Watches the file from now on; an empty path for none. `known` is the state in which we read
    /// or wrote it last; without one its present state is taken for known.
    void watch(const std::filesystem::path& file,
               const std::optional<core::FileIdentity>& known = {});

    /// The state in which we know the file.
    [[nodiscard]] const core::FileIdentity& known() const { return known_; }

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
