#include "workbench/gui/look/TextMatch.hpp"

#include "workbench/gui/look/Text.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

using utils::string::ascii::foldCase;

bool isDigit(QChar c) { return utils::string::ascii::isDigit(c.unicode()); }

// The digits from `at` on without leading zeros; `at` stands behind them afterwards.
QStringView takeNumber(QStringView text, qsizetype& at) {
    while (at < text.size() && text[at] == u'0')
        ++at;
    const auto first = at;
    while (at < text.size() && isDigit(text[at]))
        ++at;
    return text.sliced(first, at - first);
}

} // namespace

TextMatch::TextMatch(const QString& wanted) : wanted_(wanted) {
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80; };
    if (std::ranges::all_of(wanted, isAscii)) {
        ascii_ = toUtf8(wanted);
        std::ranges::transform(ascii_, ascii_.begin(), foldCase);
    }
}

bool TextMatch::isIn(std::string_view text) const {
    if (wanted_.isEmpty())
        return true;
    if (ascii_.empty())
        return isIn(toQt(text));
    return std::ranges::search(text, ascii_, {}, foldCase).begin() != text.end();
}

bool comesBefore(QStringView a, QStringView b) {
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const auto left = takeNumber(a, i);
            const auto right = takeNumber(b, j);
            if (left.size() != right.size())
                return left.size() < right.size();
            if (const int order = left.compare(right); order != 0)
                return order < 0;
            continue;
        }
        const auto left = a[i++].toCaseFolded();
        const auto right = b[j++].toCaseFolded();
        if (left != right)
            return left < right;
    }
    const auto restOfA = a.size() - i;
    const auto restOfB = b.size() - j;
    return restOfA != restOfB ? restOfA < restOfB : a.compare(b) < 0;
}

} // namespace corvane::workbench::gui
