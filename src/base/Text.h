// Small text helpers; only ASCII letters fold case.
#pragma once
#include <string>
#include <string_view>

namespace base {

std::string trimBlanks(std::string_view text); // blanks only, both ends
std::string lowerCase(std::string_view text);
bool containsIgnoringCase(std::string_view text, std::string_view part); // an empty part is in every text
bool equalIgnoringCase(std::string_view a, std::string_view b);
std::string replaceAll(std::string text, std::string_view from,
                       std::string_view to); // replacements are not searched

} // namespace base
