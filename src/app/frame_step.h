#pragma once

/// One turn of the frame loop up to the world step: pumps the messages, samples the devices, steps.
/// @return false once the quit message has come; then there is no world any more
bool StepFrame();
