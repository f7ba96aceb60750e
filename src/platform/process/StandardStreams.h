#pragma once

namespace burnwick {

// Opens standard input, output and error to nowhere where a caller has closed them: a port or a file would
// take their place otherwise, and have in it what is printed. To be called before anything is opened.
void KeepStandardStreams();

// True when standard error is a terminal, on which a line can be rewritten.
bool ErrorOutputIsTerminal();

// Columns of that terminal; 80 when it does not say.
int ErrorOutputColumns();

// A write that fails must not end the process in the middle of a run, be it for a reader that went away
// (`… | head`) or for a limit on the size of files. It fails like any other instead.
void SurviveFailedWrites();

}  // namespace burnwick
