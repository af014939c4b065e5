#include "qt/map/line_material.h"

#include <QMatrix4x4>
#include <algorithm>
#include <cstring>

namespace fleetor {

namespace {

/// As the uniform block of the shaders.
struct LineUniforms {
  float matrix[16];
  float color[4];
  float faint[4];
  float casing[4];
  float halfWidth;
  float casingWidth;
  float pixel;
  float scale;
  float strongUntil;
};

constexpr float casingWidth = 1;  // points, on each side
constexpr float casingOpacity = 0.55F;
constexpr double lightLine = 0.75;  // luma above which the casing is dark

class LineShader final : public QSGMaterialShader {
 public:
  LineShader() {
    setShaderFileName(VertexStage, QStringLiteral(":/qt/map/shaders/line.vert.qsb"));
    setShaderFileName(FragmentStage, QStringLiteral(":/qt/map/shaders/line.frag.qsb"));
  }

  bool updateUniformData(RenderState& state, QSGMaterial* material, QSGMaterial*) override {
    const auto& style = static_cast<LineMaterial*>(material)->style;
    LineUniforms uniforms;
    std::memcpy(uniforms.matrix, state.combinedMatrix().constData(), sizeof uniforms.matrix);
    const float opacity = static_cast<float>(style.color.alphaF()) * state.opacity();
    const auto premultiply = [opacity](const QColor& color, float* out) {
      out[0] = static_cast<float>(color.redF()) * opacity;
      out[1] = static_cast<float>(color.greenF()) * opacity;
      out[2] = static_cast<float>(color.blueF()) * opacity;
      out[3] = opacity;
    };
    premultiply(style.color, uniforms.color);
    premultiply(style.faint, uniforms.faint);
    const double luma =
        0.299 * style.color.redF() + 0.587 * style.color.greenF() + 0.114 * style.color.blueF();
    std::fill_n(uniforms.casing, 3, luma > lightLine ? 0.0F : casingOpacity * opacity);
    uniforms.casing[3] = casingOpacity * opacity;
    uniforms.halfWidth = style.halfWidth;
    uniforms.casingWidth = casingWidth;
    uniforms.pixel = style.pixel;
    uniforms.scale = style.scale;
    uniforms.strongUntil = style.strongUntil;
    std::memcpy(state.uniformData()->data(), &uniforms, sizeof uniforms);
    return true;
  }
};

}  // namespace

LineMaterial::LineMaterial() {
  // Merged strips would have to be transformed and sent anew whenever the map moves.
  setFlag(Blending | NoBatching);
}

QSGMaterialType* LineMaterial::type() const {
  static QSGMaterialType type;
  return &type;
}

QSGMaterialShader* LineMaterial::createShader(QSGRendererInterface::RenderMode) const {
  return new LineShader;
}

int LineMaterial::compare(const QSGMaterial* other) const {
  if (style == static_cast<const LineMaterial*>(other)->style) return 0;
  return this < other ? -1 : 1;
}

const QSGGeometry::AttributeSet& LineMaterial::attributes() {
  static const QSGGeometry::Attribute list[] = {
      QSGGeometry::Attribute::createWithAttributeType(0, 2, QSGGeometry::FloatType,
                                                      QSGGeometry::PositionAttribute),
      QSGGeometry::Attribute::createWithAttributeType(1, 2, QSGGeometry::FloatType,
                                                      QSGGeometry::UnknownAttribute),
      QSGGeometry::Attribute::createWithAttributeType(2, 1, QSGGeometry::FloatType,
                                                      QSGGeometry::UnknownAttribute),
      QSGGeometry::Attribute::createWithAttributeType(3, 1, QSGGeometry::FloatType,
                                                      QSGGeometry::UnknownAttribute),
  };
  static const QSGGeometry::AttributeSet set{4, sizeof(LineVertex), list};
  return set;
}

}  // namespace fleetor
