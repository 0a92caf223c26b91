#include "shell/MprisRootAdaptor.h"
