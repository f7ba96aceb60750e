#pragma once

#include <filesystem>

#include "bench/Figure.h"

// Each measures one thing, one after the other, and keeps its files in `folder`. They throw when a run that
// they measure fails.
namespace bench {

// What a block costs the processor and the system, beside the least that any program could do.
Figures MeasureBlockCost(const std::filesystem::path& folder);

// How much of a real line's time the link makes use of.
Figures MeasureLineUse(const std::filesystem::path& folder);

// Processor time of telling what an image is, and of comparing two.
Figures MeasureImageCost(const std::filesystem::path& folder);

// Start, memory and processor time of burnwick-cli.
Figures MeasureProgramCost(const std::filesystem::path& folder);

// How the window answers, what it adds to a run, its start and its processor time; nothing where it is not
// built. To be called last: the environment is its own afterwards.
Figures MeasureWindowCost(const std::filesystem::path& folder);

}  // namespace bench
