// Messages through gettext, their values through Boost.Format.
#include "cards/translation.h"

#include <boost/format.hpp>

#include <libintl.h>

namespace trikon {

std::string translate(const char* message, std::initializer_list<std::string_view> values)
{
    boost::format text(gettext(message));
    // A catalogue whose sentence leaves a value out is poor, but no reason to fail.
    text.exceptions(boost::io::no_error_bits);
    for (const std::string_view value : values) {
        text % value;
    }
    return text.str();
}

}  // namespace trikon
