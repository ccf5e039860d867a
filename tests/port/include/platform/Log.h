#pragma once
#include "handset/format.h"
