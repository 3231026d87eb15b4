// Messages in the user's language, with their values filled in.
//
// A message is a whole sentence with %1%, %2% for its values, so that a translator may move them.
// Without a catalogue for the user's language the sentence itself is shown.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace trikon {

/// The translation of `message` with `values` in the places of %1%, %2% ...
std::string translate(const char* message, std::initializer_list<std::string_view> values = {});

}  // namespace trikon
