#include "game/game_state.h"

#include "game/memory_map.h"

GameState ReadGameState(Long Profile) {
    const Long Word = ReadMapped(Profile, L"GameState");
    if (Word < 1) return GameState::NoGame;
    return Word == 1 ? GameState::BetweenGames : GameState::Running;
}

LifeState LifeStateOf(Long Word) {
    if (Word < SpawnSelectWord) return LifeState::None;
    return Word == SpawnSelectWord ? LifeState::SpawnSelect : LifeState::Alive;
}
