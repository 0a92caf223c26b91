#pragma once

// Puts every process-wide object of the platform (and every shared instance made through
// SharedInstance) back to how a new process finds it. Tests and the simulator start from here.
void resetPlatformState();
