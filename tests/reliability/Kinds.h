#pragma once

#include "reliability/Case.h"

namespace burnwick::test {

// Of family 1 by its size alone.
Kind BootCode64KiB();
Kind UnmarkedImage();
Kind ImageOfType2();
// Of type 3, for a unit that calls itself '"'.
Kind ImageWithIdentity();
// The same image, and a unit that calls itself something else.
Kind ImageForAnotherUnit();
// Of type 4: its last block is not full.
Kind ImageOfOddLength();
// Of type 343, for a unit that is not probed but asked for.
Kind AnnouncedImage();
// The same image, and a unit that waits for a probe.
Kind ImageThatNobodyAwaits();
Kind Family1Of1MiB();

// A chip of so many KiB read from its start.
Kind UploadOf(int blocks, int chipKiB);
// The same, with boot code in the chip.
Kind UploadOfBootCode(int blocks, int chipKiB);
// A chip whose unit is no faster than 57600 bit/s.
Kind UploadFromSlowUnit(int blocks, int chipKiB);

}  // namespace burnwick::test
