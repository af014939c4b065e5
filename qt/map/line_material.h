#pragma once

#include <QColor>
#include <QSGGeometry>
#include <QSGMaterial>
#include <QSGMaterialShader>

namespace fleetor {

/// A vertex of a strip along a line, two for each point of it.
struct LineVertex {
  float x = 0;
  float y = 0;
  float outwardsX = 0;  ///< to the edge of a line of half width 1
  float outwardsY = 0;
  float side = 0;   ///< -1 or 1: which edge
  float point = 0;  ///< which of the line's points; in a gap below 0, see LineMaterial::gapBegin
};

/// A line of any width with smooth edges, whatever the zoom at which its vertices were made, in a thin casing
/// that sets it off from streets and aerial pictures. Render thread.
class LineMaterial final : public QSGMaterial {
 public:
  static constexpr float everyPoint = 1e9F;
  static constexpr float gapBegin = -1;  ///< less the distance from the gap's end, in units of the vertices

  struct Style {
    QColor color;
    QColor faint;                    ///< of what lies ahead
    float halfWidth = 1;             ///< points
    float pixel = 1;                 ///< points
    float scale = 1;                 ///< points for one unit of the vertices
    float strongUntil = everyPoint;  ///< index of the line's point at which it becomes faint

    friend bool operator==(const Style&, const Style&) = default;
  };

  LineMaterial();
  QSGMaterialType* type() const override;
  QSGMaterialShader* createShader(QSGRendererInterface::RenderMode mode) const override;
  int compare(const QSGMaterial* other) const override;

  static const QSGGeometry::AttributeSet& attributes();

  Style style;
};

}  // namespace fleetor
