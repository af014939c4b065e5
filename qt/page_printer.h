#pragma once

#include <string>

#include "platform/page.h"

namespace fleetor {

/// The page as a PDF file, in the program's typeface and reading direction. Any thread, while there is a
/// QGuiApplication.
std::string pdfOf(const Page& page);

}  // namespace fleetor
