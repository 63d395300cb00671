#include "RecordText.h"

#include <sstream>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"

namespace {

std::string TextOf(const VXFlintShapeStyleChangeRecord& change) {
    std::ostringstream text;
    if (change.StateMoveTo != 0) text << "M " << change.MoveDeltaX << "," << change.MoveDeltaY;
    if (change.StateLineStyle != 0) text << " l" << change.LineStyle;
    if (change.StateFillStyle0 != 0) text << " f" << change.FillStyle0;
    if (change.StateFillStyle1 != 0) text << " g" << change.FillStyle1;
    return text.str();
}

std::string TextOf(const VXFlintStraightEdgeRecord& edge) {
    std::ostringstream text;
    if (edge.GeneralLineFlag != 0) {
        text << "L " << edge.DeltaX << "," << edge.DeltaY;
    } else if (edge.VertLineFlag != 0) {
        text << "V " << edge.DeltaY;
    } else {
        text << "H " << edge.DeltaX;
    }
    return text.str();
}

std::string TextOf(const VXFlintCurvedEdgeRecord& edge) {
    std::ostringstream text;
    text << "C " << edge.ControlDeltaX << "," << edge.ControlDeltaY << " " << edge.AnchorDeltaX << ","
         << edge.AnchorDeltaY;
    return text.str();
}

std::string TextOf(const VXFlintShapeRecordBase* record) {
    if (const auto* change = dynamic_cast<const VXFlintShapeStyleChangeRecord*>(record)) {
        return TextOf(*change);
    }
    if (const auto* edge = dynamic_cast<const VXFlintStraightEdgeRecord*>(record)) return TextOf(*edge);
    if (const auto* edge = dynamic_cast<const VXFlintCurvedEdgeRecord*>(record)) return TextOf(*edge);
    return dynamic_cast<const VXFlintShapeEndRecord*>(record) != nullptr ? "E" : "?";
}

}  // namespace

std::string TextOf(const VXFlintShapeRecords& records, std::size_t first) {
    std::string text;
    for (std::size_t i = first; i < records.Records.size(); ++i) {
        if (i != first) text += " | ";
        text += TextOf(records.Records[i]->Record.get());
    }
    return text;
}
