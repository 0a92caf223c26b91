#include "platform/services/FIRApp.h"

#include <atomic>

namespace {
std::atomic<int> gCount{0};
}

void FIRApp::configure() { ++gCount; }
bool FIRApp::isConfigured() { return gCount > 0; }
int FIRApp::configureCount() { return gCount; }
void FIRApp::reset() { gCount = 0; }
