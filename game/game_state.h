// What the game server says of the game and of a player's life, by name instead of by number.
#pragma once

#include "host/failure.h"

enum class GameState : unsigned char {
    NoGame,       // the word is below 1: nobody can play
    BetweenGames, // 1: players are there, teams can be switched
    Running,      // above 1
};
// The state of the profile's game; fails as the memory helper does.
GameState ReadGameState(Long Profile);

enum class LifeState : unsigned char {
    None,        // the word is below 1: no player is there
    SpawnSelect, // 1: on the spawn select screen; writing it sends a living player there
    Alive,       // above 1
};
inline constexpr Long SpawnSelectWord = 1;
LifeState LifeStateOf(Long Word);
