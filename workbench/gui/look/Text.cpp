#include "workbench/gui/look/Text.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace corvane::workbench::gui {

QString toQt(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString toQt(std::u16string_view utf16) {
    return QString::fromUtf16(utf16.data(), static_cast<qsizetype>(utf16.size()));
}

std::string toUtf8(const QString& text) {
    return utils::string::detail::utf16ToUtf8(toUtf16(text));
}

std::u16string toUtf16(const QString& text) { return text.toStdU16String(); }

QString translated(std::string_view context, std::string_view english,
                   std::initializer_list<QString> arguments) {
    QString rest = toQt(i18n::translate(context, english));
    QString filled;
    for (const QString& argument : arguments) {
        const auto placeholder = rest.indexOf(QLatin1String("{}"));
        if (placeholder < 0)
            break;
        filled += rest.left(placeholder) + argument;
        rest.remove(0, placeholder + 2);
    }
    return filled + rest;
}

QString formatted(std::size_t number) {
    return QLocale().toString(static_cast<qulonglong>(number));
}

QString formatted(const QDateTime& time) {
    const QLocale locale;
    return translated("corvane::workbench::gui", "{} at {}",
                      {locale.toString(time.date(), QLocale::LongFormat),
                       locale.toString(time.time(), QLocale::ShortFormat)});
}

QString counted(std::string_view context, std::string_view one, std::string_view many,
                std::size_t number) {
    return number == 1 ? translated(context, one) : translated(context, many, {formatted(number)});
}

QString nameAndFolder(const QString& file) {
    const QFileInfo info(file);
    auto folder = info.absolutePath();
    const auto home = QDir::homePath();
    if (folder == home || folder.startsWith(home + QLatin1Char('/')))
        folder.replace(0, home.size(), QLatin1Char('~'));
    return QStringLiteral("%1  –  %2").arg(info.fileName(), QDir::toNativeSeparators(folder));
}

QString messageOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return toQt(std::string_view(error.what()));
    } catch (...) { // of a plug-in that throws what is no exception
        return translated("corvane::workbench::gui", "unknown error");
    }
}

} // namespace corvane::workbench::gui
