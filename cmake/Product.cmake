# What the product says of itself, wherever it does: about boxes, packages, help. The version is the project's.
set(BURNWICK_REVISION 1000)
set(BURNWICK_BUILD "${PROJECT_VERSION}.${BURNWICK_REVISION}")
set(BURNWICK_VENDOR "The Burnwick authors")
set(BURNWICK_SUMMARY "Program, read and check the flash memory of video units")
set(BURNWICK_COMMENTS
  "Writes firmware images into the flash memory of video units over an RS-232 line, and verifies them.")
set(BURNWICK_COPYRIGHT "Copyright © 2026 ${BURNWICK_VENDOR}")
# A domain that is reserved for examples, until the product has one of its own.
set(BURNWICK_WEB_SITE "https://www.burnwick.example/")
set(BURNWICK_EMAIL "support@burnwick.example")
# By this name desktops know the window and its entry in the menu of programs.
set(BURNWICK_DESKTOP_ID "example.burnwick.Burnwick")

# "08" would be an octal number to a compiler.
string(REGEX REPLACE "^0+([0-9])" "\\1" BURNWICK_MINOR "${PROJECT_VERSION_MINOR}")
