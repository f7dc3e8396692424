#include "engine/singletons.h"

Timer* theTimer = nullptr;
Log* theLog = nullptr;
Engine* theEngine = nullptr;
Scene* theScene = nullptr;
PlayerControl* thePlayerControl = nullptr;
