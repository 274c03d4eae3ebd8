#pragma once

#include <string>

class Stage;

/// What there is to see, each from several sides. Names of the pictures begin with the kind: model-, solid-, level-.
void shootModel(Stage& stage, const std::string& modelName);
/// The rocket as it flies: its flight mirrors the model.
void shootRocket(Stage& stage);
void shootSolid(Stage& stage, const std::string& solidName);
/// How a crater is cut, step by step, with the edges of the faces: cut-.
void shootCuts(Stage& stage);
void shootLevel(Stage& stage, const std::string& levelName);
/// A worm of a level with each weapon in hand, from outside and through its own aim view: hand-.
void shootWeapons(Stage& stage, const std::string& levelName);
