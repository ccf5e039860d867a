#include "platform/OmxNode.h"

namespace android {

IOMXNode::~IOMXNode() = default;

}  // namespace android
