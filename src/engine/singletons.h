#pragma once

struct Engine;
struct Log;
struct PlayerControl;
struct Scene;
struct Timer;

// The five process-wide singletons, created once, in this order. Null before the entry has created them;
// engine, scene and log are null again after the teardown.
extern Timer* theTimer;
extern Log* theLog;
extern Engine* theEngine;
extern Scene* theScene;
extern PlayerControl* thePlayerControl;
