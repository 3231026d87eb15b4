// Short ways to write cards in tests.
#pragma once

#include "cards/cards_configuration.h"
#include "cards/hands.h"

#include <string>

namespace trikon {

/// The hand in dot form, for example "AKQ.JT9.876.5432".
inline CardsConfiguration hand(const std::string& dotForm)
{
    CardsConfiguration cards;
    cards.readDotStr(dotForm, CardsConfiguration());
    return cards;
}

/// The four hands N E S W, each in dot form.
inline Hands hands(const std::string& north, const std::string& east, const std::string& south,
                   const std::string& west)
{
    return {hand(north), hand(east), hand(south), hand(west)};
}

/// What `action` throws as text; "no error" when it throws nothing.
template <class Action>
std::string errorOf(Action action)
{
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace trikon
