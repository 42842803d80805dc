// Names of the files a model gives its name to (project, report, pictures).
#pragma once

#include <string>

namespace tarvokin {

// True when `name` can be a file name on the platforms the program runs on:
// not empty, not "." or "..", no path separator, none of the characters
// Windows refuses (<>:"/\|?*), no control character, not ending in a blank
// or a point.
bool AcceptableFileName(const std::string& name);

}  // namespace tarvokin
