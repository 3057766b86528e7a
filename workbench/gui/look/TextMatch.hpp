#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace corvane::workbench::gui {

/// Says whether texts contain a given one, whatever the case of the letters. An empty text is in
/// every other.
class TextMatch {
public:
    explicit TextMatch(const QString& wanted);

    [[nodiscard]] bool isIn(const QString& text) const {
        return text.contains(wanted_, Qt::CaseInsensitive);
    }
    /// For UTF-8, without a conversion where the wanted text is plain ASCII.
    [[nodiscard]] bool isIn(std::string_view text) const;

private:
    QString wanted_;
    std::string ascii_; // in lower case; empty unless the wanted text is ASCII
};

/// Whether `a` comes before `b` in a list for people: numbers in the texts count by their value,
/// the case of letters decides only between texts that are equal otherwise.
[[nodiscard]] bool comesBefore(QStringView a, QStringView b);

} // namespace corvane::workbench::gui
