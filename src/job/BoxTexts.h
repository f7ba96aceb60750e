#pragma once

#include <string>

#include "platform/window/BoxText.h"

// What the message boxes of a run say.
namespace burnwick {

BoxText VerificationQuestion();

BoxText TransmittingErrorBox();

// A port that could not be opened.
BoxText CommPortErrorBox(int port);

// A recent file that is not there any more.
BoxText FileNotFoundBox(const std::string& path);

// A folder that holds a file of the name already. Both files in words: their sizes and times.
BoxText ReplaceQuestion(const std::string& fileName, const std::string& existing, const std::string& copying);

BoxText CopyErrorBox();

// A program without its manual. The caption is the application's title.
BoxText HelpFileMissingBox(const std::string& title);

// An address that no program of the desktop took.
BoxText LinkNotOpenedBox(const std::string& link);

// Any other trouble, by its description.
BoxText ErrorBox(const std::string& description);

}  // namespace burnwick
