#pragma once

#include <string>

class Stage;

/// What there is to see, each from several sides. Names of the pictures begin with the kind: model-, solid-, level-.
void shootModel(Stage& stage, const std::string& modelName);
void shootSolid(Stage& stage, const std::string& solidName);
void shootLevel(Stage& stage, const std::string& levelName);
