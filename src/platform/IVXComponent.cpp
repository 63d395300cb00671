#include "platform/IVXComponent.h"

IVXComponent::~IVXComponent() = default;
