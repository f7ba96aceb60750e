#include "cli/ProgressLine.h"

#include <algorithm>
#include <cstdio>

namespace burnwick::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto RedrawInterval = 100ms;
constexpr int WidestBar = 40;
constexpr const char* Green = "\x1b[32m";
constexpr const char* Plain = "\x1b[0m";
constexpr const char* ClearLine = "\r\x1b[K";

std::string Percentage(int percent) {
    const std::string number = std::to_string(percent);
    return std::string(3 - number.size(), ' ') + number + " %";
}

}  // namespace

ProgressLine::ProgressLine(std::ostream& err, int columns, bool color)
    : Err_(err), Columns_(columns), Color_(color) {}

void ProgressLine::ShowBlock(std::chrono::milliseconds now, int block, int totalBlock) {
    if (totalBlock <= 0) {
        return;
    }
    Rate_.Add(now, block, totalBlock);
    Percent_ = std::clamp(block * 100 / totalBlock, Percent_, 100);
    if (Columns_ == 0) {
        // Progress that was superseded leaves no line out.
        while (ToldTens_ < Percent_ / 10) {
            ++ToldTens_;
            Err_ << ToldTens_ * 10 << " %\n" << std::flush;
        }
    } else if (now - LastDrawn_ >= RedrawInterval || block == totalBlock) {
        LastDrawn_ = now;
        Draw(Percent_);
    }
}

void ProgressLine::ShowText(const std::string& text) {
    if (Columns_ > 0) {
        Rewrite(text.substr(0, static_cast<std::size_t>(Columns_ - 1)));
    }
}

void ProgressLine::Restart() {
    Clear();
    Percent_ = 0;
    ToldTens_ = 0;
    Rate_ = {};
}

void ProgressLine::Clear() {
    if (Shown_) {
        Err_ << ClearLine << std::flush;
        Shown_ = false;
    }
}

void ProgressLine::Draw(int percent) {
    const std::string numbers = " " + Percentage(percent) + "  " + Rate_.Text();
    const int room = Columns_ - 1 - static_cast<int>(numbers.size()) - 2;
    if (room < 4) {
        Rewrite(Percentage(percent).substr(0, static_cast<std::size_t>(Columns_ - 1)));
        return;
    }
    const int width = std::min(room, WidestBar);
    const auto filled = static_cast<std::size_t>(width * percent / 100);
    const std::string bar = std::string(filled, '#');
    const std::string rest(static_cast<std::size_t>(width) - filled, '.');
    Rewrite("[" + (Color_ ? Green + bar + Plain : bar) + rest + "]" + numbers);
}

void ProgressLine::Rewrite(const std::string& line) {
    Err_ << ClearLine << line << std::flush;
    Shown_ = true;
}

}  // namespace burnwick::cli
