#include "Report/Terminal.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <string_view>

#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Report {

namespace {

std::optional<std::string> setting(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::size_t> positive(std::optional<std::size_t> count) {
    return count && *count > 0 ? count : std::nullopt;
}

std::optional<std::size_t> number(const std::optional<std::string>& text) {
    if (!text) return std::nullopt;
    std::size_t number = 0;
    const char* end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, number);
    return error == std::errc() && rest == end ? positive(number) : std::nullopt;
}

bool isUtf8(std::string_view charset) {
    std::string name(charset);
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; });
    return name == "UTF-8" || name == "UTF8";
}

/// The character set that the locale's name tells; for where that locale is not installed.
std::string charsetInName() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const std::string locale = setting(name).value_or("");
        if (locale.empty()) continue;
        const std::size_t dot = locale.find('.');
        return dot == std::string::npos ? "" : locale.substr(dot + 1, locale.find('@', dot) - dot - 1);
    }
    return "";
}

std::string localeCharset() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) return charsetInName();
    std::string charset = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    return charset;
}

} // namespace

Terminal terminalOf(const TerminalFacts& facts) {
    const std::string term = facts.term.value_or("");
    const bool obeysCodes = facts.isTerminal && !term.empty() && term != "dumb";
    const auto told = positive(facts.columns);
    // The text console knows neither the braille nor most of the blocks.
    const bool hasGlyphs = !(facts.isTerminal && (term == "linux" || term == "dumb"));
    return {
        .columns = told ? *told : number(facts.columnsSetting).value_or(Terminal().columns),
        .rows = facts.isTerminal ? positive(facts.rows) : std::nullopt,
        .palette = {.colour = obeysCodes && facts.noColor.value_or("").empty(),
                    .unicode = isUtf8(facts.charset) && hasGlyphs},
        .movesCursor = obeysCodes,
    };
}

TerminalFacts terminalFacts(int fd) {
    TerminalFacts facts{
        .isTerminal = isatty(fd) == 1,
        .charset = localeCharset(),
        .columnsSetting = setting("COLUMNS"),
        .noColor = setting("NO_COLOR"),
        .term = setting("TERM"),
    };
    winsize size{};
    if (ioctl(fd, TIOCGWINSZ, &size) == 0) {
        facts.columns = size.ws_col;
        facts.rows = size.ws_row;
    }
    return facts;
}

} // namespace Report
