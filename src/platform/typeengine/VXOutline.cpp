#include "platform/typeengine/VXOutline_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

/// Takes the steps of one FreeType outline after another into a `VXOutline`.
class VXOutlineBuilder {
public:
    VXOutlineBuilder(VXOutline& target, bool isTurned) : m_Target(target), m_IsTurned(isTurned) {}

    bool Run(const FT_Outline& outline) {
        FT_Outline_Funcs functions{};
        functions.move_to = [](const FT_Vector* to, void* builder) { return Of(builder).Move(to); };
        functions.line_to = [](const FT_Vector* to, void* builder) {
            return Of(builder).Add(Step::Line, {to});
        };
        functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* builder) {
            return Of(builder).Add(Step::Quadratic, {control, to});
        };
        functions.cubic_to = [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to,
                                void* builder) {
            return Of(builder).Add(Step::Cubic, {first, second, to});
        };
        // FreeType reads the outline only; its interface is older than const.
        const int result = FT_Outline_Decompose(const_cast<FT_Outline*>(&outline), &functions, this);
        FinishContour();
        return result == 0;
    }

private:
    using Point = VXOutline::Point;
    using Step = VXOutline::Step;

    static VXOutlineBuilder& Of(void* builder) { return *static_cast<VXOutlineBuilder*>(builder); }

    int Move(const FT_Vector* to) {
        FinishContour();
        m_FirstPoint = m_Target.m_Points.size();
        m_FirstStep = m_Target.m_Steps.size();
        return Add(Step::Move, {to});
    }

    int Add(Step step, std::initializer_list<const FT_Vector*> points) {
        m_Target.m_Steps.push_back(step);
        for (const FT_Vector* point : points) {
            m_Target.m_Points.push_back({static_cast<double>(point->x), static_cast<double>(point->y)});
        }
        return 0;
    }

    void CloseByLine() {
        m_Target.m_Steps.push_back(Step::Line);
        m_Target.m_Points.push_back(Point(m_Target.m_Points[m_FirstPoint]));
    }

    void FinishContour() {
        std::vector<Point>& points = m_Target.m_Points;
        std::vector<Step>& steps = m_Target.m_Steps;
        if (m_FirstStep == steps.size()) return;

        const auto first = points.begin() + static_cast<std::ptrdiff_t>(m_FirstPoint);
        if (std::all_of(first, points.end(),
                        [start = *first](const Point& point) { return point == start; })) {
            points.resize(m_FirstPoint);
            steps.resize(m_FirstStep);
            return;
        }
        if (points.back() != points[m_FirstPoint]) CloseByLine();
        if (m_IsTurned) {
            std::reverse(points.begin() + static_cast<std::ptrdiff_t>(m_FirstPoint), points.end());
            std::reverse(steps.begin() + static_cast<std::ptrdiff_t>(m_FirstStep) + 1, steps.end());
        }
        if (steps.back() != Step::Line) CloseByLine();
        m_FirstPoint = points.size();
        m_FirstStep = steps.size();
    }

    VXOutline& m_Target;
    bool m_IsTurned;
    std::size_t m_FirstPoint = 0;  ///< of the contour that is being taken
    std::size_t m_FirstStep = 0;
};

namespace {

struct Position {
    double x;
    double y;
};

/// Writes into arrays that have room. A number beyond every float becomes infinite.
class PathWriter {
public:
    PathWriter(float* points, KVMPointType* kinds) : m_Points(points), m_Kinds(kinds) {}

    void Write(KVMPointType kind, Position position) {
        *m_Kinds++ = kind;
        *m_Points++ = static_cast<float>(position.x);
        *m_Points++ = static_cast<float>(position.y);
    }
    void WriteQuadratic(Position from, Position control, Position to);

    const KVMPointType* GetEnd() const { return m_Kinds; }

private:
    float* m_Points;
    KVMPointType* m_Kinds;
};

/// Whether `point` is within `distance` of the nearest point between `from` and `to`.
bool IsNear(Position point, Position from, Position to, double distance) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double x = point.x - from.x, y = point.y - from.y;
    const double squaredLength = dx * dx + dy * dy;
    const double along = x * dx + y * dy;
    const double limit = distance * distance;
    if (along <= 0.0) return x * x + y * y <= limit;
    if (along >= squaredLength) return (x - dx) * (x - dx) + (y - dy) * (y - dy) <= limit;
    const double across = x * dy - y * dx;
    return across * across <= limit * squaredLength;
}

/// Raises a quadratic to the cubic that is the same curve.
///
/// A reader who wants the quadratic back, and the movie library does, finds its control where the tangents at
/// the two ends meet. Floats hold the cubic only so well, and the flatter the curve, the further off they
/// meet: far enough for none of the reader's tests to hold, so that it halves the curve until hundreds of
/// lines are left. A curve whose control is next to its chord is therefore a line. Every other control is
/// found within a fraction of a unit. Where it lies on a whole unit, a reader who drops fractions would still
/// come out one unit nearer to the baseline: it is kept away from there.
void PathWriter::WriteQuadratic(Position from, Position control, Position to) {
    constexpr double kFlat = 1.0 / 16.0;
    constexpr double kMargin = 1.0 / 512.0;
    constexpr double kTwoThirds = 2.0 / 3.0;
    if (IsNear(control, from, to, kFlat)) {
        Write(kKVMLine, to);
        return;
    }
    if (control.y != 0.0) control.y += std::copysign(kMargin, control.y);
    Write(kKVMCurve,
          {from.x + (control.x - from.x) * kTwoThirds, from.y + (control.y - from.y) * kTwoThirds});
    Write(kKVMCurve, {to.x + (control.x - to.x) * kTwoThirds, to.y + (control.y - to.y) * kTwoThirds});
    Write(kKVMCurve, to);
}

}  // namespace

VXTransform VXTransform::Then(const VXTransform& next) const {
    return {a * next.a + b * next.c,
            a * next.b + b * next.d,
            c * next.a + d * next.c,
            c * next.b + d * next.d,
            tx * next.a + ty * next.c + next.tx,
            tx * next.b + ty * next.d + next.ty};
}

bool VXTransform::IsFinite() const {
    const double values[] = {a, b, c, d, tx, ty};
    return std::all_of(std::begin(values), std::end(values),
                       [](double value) { return std::isfinite(value); });
}

bool VXOutline::Load(const FT_Outline& outline) {
    Clear();
    // Room for all that can come, since nothing may be thrown through FreeType: each point yields a step at
    // most, and with it a point between two controls; each contour a move and three lines that close it.
    const auto points = static_cast<std::size_t>(outline.n_points);
    const auto contours = static_cast<std::size_t>(outline.n_contours) + 1;
    m_Points.reserve(points * 2 + contours * 4);
    m_Steps.reserve(points + contours * 4);
    return VXOutlineBuilder(*this, (outline.flags & FT_OUTLINE_REVERSE_FILL) != 0).Run(outline);
}

TYBox VXOutline::GetBox(const VXTransform& transform) const {
    if (m_Points.empty()) return {};
    double left = std::numeric_limits<double>::max(), top = left;
    double right = std::numeric_limits<double>::lowest(), bottom = right;
    for (const Point& point : m_Points) {
        const double x = transform.a * point.x + transform.c * point.y + transform.tx;
        const double y = transform.b * point.x + transform.d * point.y + transform.ty;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    return {static_cast<float>(left), static_cast<float>(top), static_cast<float>(right),
            static_cast<float>(bottom)};
}

bool VXOutline::AppendTo(VXPathEntries& path, const VXTransform& transform) const {
    // Each step has one entry more than points at most: a quadratic has three, and a move stands for its
    // close.
    const std::size_t before = path.kinds.size();
    const std::size_t most = before + m_Points.size() + m_Steps.size();
    path.points.resize(most * 2);
    path.kinds.resize(most);
    PathWriter writer(path.points.data() + before * 2, path.kinds.data() + before);

    const auto at = [&](const Point& point) {
        return Position{transform.a * point.x + transform.c * point.y + transform.tx,
                        transform.b * point.x + transform.d * point.y + transform.ty};
    };
    const Point* point = m_Points.data();
    Position start{}, current{};
    for (std::size_t i = 0; i < m_Steps.size(); ++i) {
        const Step step = m_Steps[i];
        const Position end = at(point[PointsOf(step) - 1]);
        switch (step) {
            case Step::Move:
                start = end;
                writer.Write(kKVMMove, end);
                break;
            case Step::Line:
                writer.Write(kKVMLine, end);
                break;
            case Step::Quadratic:
                writer.WriteQuadratic(current, at(point[0]), end);
                break;
            case Step::Cubic:
                writer.Write(kKVMCurve, at(point[0]));
                writer.Write(kKVMCurve, at(point[1]));
                writer.Write(kKVMCurve, end);
                break;
        }
        current = end;
        point += PointsOf(step);
        if (i + 1 == m_Steps.size() || m_Steps[i + 1] == Step::Move) writer.Write(kKVMClose, start);
    }
    const auto count = static_cast<std::size_t>(writer.GetEnd() - path.kinds.data());
    path.points.resize(count * 2);
    path.kinds.resize(count);
    return count != before;
}
