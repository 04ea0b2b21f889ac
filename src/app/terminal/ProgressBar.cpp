// SPDX-License-Identifier: MIT
#include "app/terminal/ProgressBar.h"

#include <fmt/format.h>

#include <algorithm>
#include <ostream>

#include "app/terminal/EscapedText.h"

namespace dorvanel::terminal {
namespace {

constexpr int usualColumns = 80;     // where the terminal does not tell
constexpr int narrowestForBar = 30;  // columns; below, the bar gives way
constexpr int widestBar = 30;
constexpr int narrowestName = 4;

std::string bar(int columns, double percent) {
    const int room = columns - 2;
    const int full = static_cast<int>(room * percent / 100);
    return fmt::format("[{:#<{}}{:-<{}}]", "", full, "", room - full);
}

}  // namespace

ProgressBar::ProgressBar(Terminal& terminal, const platform::Clock& clock,
                         std::function<ProgressBytes()> bytes)
    : terminal_(terminal), clock_(clock), bytes_(std::move(bytes)) {}

ProgressBar::~ProgressBar() {
    clear();
}

void ProgressBar::setDoubleValue(double percent) {
    percent_ = std::clamp(percent, 0.0, 100.0);
}

void ProgressBar::FileName::setStringValue(std::string_view text) {
    if (bar_.terminal_.errIsTerminal) bar_.name_ = escapedForTerminal(text);
}

void ProgressBar::clear() {
    if (drawn_ == 0) return;
    terminal_.err << '\r' << std::string(static_cast<std::size_t>(drawn_), ' ') << '\r'
                  << std::flush;
    drawn_ = 0;
}

void ProgressBar::draw() {
    if (!terminal_.errIsTerminal) return;
    if (percent_ > 0) {
        isUnderWay_ = true;
    } else if (isUnderWay_) {
        clear();  // back to the beginning: the request is over, and the next has its own time
        started_.reset();
        return;
    }
    if (!started_) started_ = clock_.now();
    const int told = terminal_.columns ? terminal_.columns() : 0;
    // The last column stays free: a full line would move the cursor to the next one.
    const int room = (told > 0 ? told : usualColumns) - 1;
    const std::string text = line(room);
    const int width = displayWidth(text);
    const int leftover = std::max(0, std::min(drawn_, room) - width);
    terminal_.err << '\r' << text << std::string(static_cast<std::size_t>(leftover), ' ')
                  << std::flush;
    drawn_ = width + leftover;
}

std::string ProgressBar::line(int columns) const {
    const std::chrono::duration<double> elapsed =
        started_ ? clock_.now() - *started_ : std::chrono::steady_clock::duration{};
    std::string text = fmt::format("{:3.0f}%", percent_);
    const auto append = [&](const std::string& part) {
        const int width = displayWidth(text) + 2 + displayWidth(part);
        if (!part.empty() && width <= columns) text += "  " + part;
    };
    if (columns >= narrowestForBar)
        text = bar(std::min(widestBar, columns / 4), percent_) + " " + text;
    append(rate(elapsed));
    append(timeLeft(elapsed));
    const int room = columns - displayWidth(text) - 2;
    if (room >= narrowestName) append(shortenedInMiddle(name_, room));
    return shortenedInMiddle(text, std::max(columns, 0));
}

std::string ProgressBar::rate(std::chrono::duration<double> elapsed) const {
    const double seconds = elapsed.count();
    if (seconds <= 0) return {};
    const double megabytes = static_cast<double>(bytes_().done) / seconds / 1e6;
    return megabytes < 10 ? fmt::format("{:.1f} MB/s", megabytes)
                          : fmt::format("{:.0f} MB/s", megabytes);
}

std::string ProgressBar::timeLeft(std::chrono::duration<double> elapsed) const {
    const ProgressBytes bytes = bytes_();
    if (elapsed.count() <= 0 || bytes.done == 0 || bytes.total < bytes.done) return {};
    const double perByte = elapsed.count() / static_cast<double>(bytes.done);
    const double seconds = perByte * static_cast<double>(bytes.total - bytes.done);
    constexpr double longest = 100.0 * 3600;
    if (seconds >= longest) return ">99 h";
    const int whole = static_cast<int>(seconds);
    return whole < 3600 ? fmt::format("{}:{:02}", whole / 60, whole % 60)
                        : fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

}  // namespace dorvanel::terminal
