#pragma once

#include <chrono>
#include <ostream>
#include <string>

#include "job/TransferRate.h"

namespace burnwick::cli {

// Progress on standard error: on a terminal a line that is rewritten and clears itself, elsewhere a line
// every 10 %. It never shows more than 100 %, and never goes backwards.
class ProgressLine {
public:
    // `columns` of the terminal; 0 when it is none.
    ProgressLine(std::ostream& err, int columns, bool color);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine() { Clear(); }

    void ShowBlock(std::chrono::milliseconds now, int block, int totalBlock);

    // A text in the place of the bar, on a terminal only.
    void ShowText(const std::string& text);

    // Begins anew, for another transfer.
    void Restart();

    // Leaves an empty line behind, for something else to be written on.
    void Clear();

private:
    void Draw(int percent);
    void Rewrite(const std::string& line);

    std::ostream& Err_;
    int Columns_;
    bool Color_;
    bool Shown_ = false;
    int Percent_ = 0;
    int ToldTens_ = 0;
    std::chrono::milliseconds LastDrawn_{-1'000'000};
    TransferRate Rate_;
};

}  // namespace burnwick::cli
