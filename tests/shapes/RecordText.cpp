#include "RecordText.h"

#include "support/Test.h"

namespace {

void Write(std::ostream& text, const VXFlintShapeRecordBase* record) {
    if (const auto* change = dynamic_cast<const VXFlintShapeStyleChangeRecord*>(record)) {
        if (change->StateMoveTo != 0) text << "M " << change->MoveDeltaX << "," << change->MoveDeltaY;
        if (change->StateLineStyle != 0) text << " l" << change->LineStyle;
        if (change->StateFillStyle0 != 0) text << " f" << change->FillStyle0;
        if (change->StateFillStyle1 != 0) text << " g" << change->FillStyle1;
    } else if (const auto* curve = dynamic_cast<const VXFlintCurvedEdgeRecord*>(record)) {
        text << "C " << curve->ControlDeltaX << "," << curve->ControlDeltaY << " " << curve->AnchorDeltaX
             << "," << curve->AnchorDeltaY;
    } else if (const auto* edge = dynamic_cast<const VXFlintStraightEdgeRecord*>(record)) {
        if (edge->GeneralLineFlag != 0) {
            text << "L " << edge->DeltaX << "," << edge->DeltaY;
        } else if (edge->VertLineFlag != 0) {
            text << "V " << edge->DeltaY;
        } else {
            text << "H " << edge->DeltaX;
        }
    } else {
        text << (dynamic_cast<const VXFlintShapeEndRecord*>(record) != nullptr ? "E" : "?");
    }
}

}  // namespace

std::string TextOf(const VXFlintShapeRecords& records, std::size_t first) {
    std::ostringstream text;
    for (std::size_t i = first; i < records.Records.size(); ++i) {
        if (i != first) text << " | ";
        Write(text, records.Records[i]->Record);
    }
    return text.str();
}
