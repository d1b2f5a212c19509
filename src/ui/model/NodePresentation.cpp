#include "ui/model/NodePresentation.h"

#include "ui/model/Presentation.h"

namespace tarnwik {

NodePresentation::NodePresentation(const ExitNode &node)
    : m_runtimeLine(presentation::runtimeLine(node))
    , m_caption(presentation::nodeCaption(node))
{
}

} // namespace tarnwik
