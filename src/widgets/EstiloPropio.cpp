#include "widgets/EstiloPropio.h"

#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "widgets/Iconos.h"
#include "widgets/Tamanos.h"

namespace utr {
namespace {

constexpr int kGruesoExteriores = 2;
constexpr int kBlancoExteriores = 40;  // the least height of what is aimed at
constexpr double kRedondeo = 2.5;
constexpr int kIconoDeBarra = 22;
constexpr int kSobreElGrupo = 3;  // of the style's own, between the title of a group and its frame

// The icon that stands for a kind of message; null for anything else.
const char* IconoDeMensaje(QStyle::StandardPixmap cual) {
  switch (cual) {
    case QStyle::SP_MessageBoxInformation:
      return "mensaje-informacion";
    case QStyle::SP_MessageBoxWarning:
      return "mensaje-aviso";
    case QStyle::SP_MessageBoxCritical:
      return "mensaje-error";
    case QStyle::SP_MessageBoxQuestion:
      return "mensaje-pregunta";
    default:
      return nullptr;
  }
}

// What has an outline by which it is found.
bool LlevaContorno(QStyle::PrimitiveElement elemento) {
  switch (elemento) {
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorRadioButton:
    case QStyle::PE_FrameGroupBox:
    case QStyle::PE_Frame:
      return true;
    default:
      return false;
  }
}

bool SeMarca(QStyle::PrimitiveElement elemento) {
  return elemento == QStyle::PE_IndicatorCheckBox || elemento == QStyle::PE_IndicatorRadioButton;
}

bool EsMarca(QStyle::PixelMetric medida) {
  switch (medida) {
    case QStyle::PM_IndicatorWidth:
    case QStyle::PM_IndicatorHeight:
    case QStyle::PM_ExclusiveIndicatorWidth:
    case QStyle::PM_ExclusiveIndicatorHeight:
    case QStyle::PM_ScrollBarExtent:
      return true;
    default:
      return false;
  }
}

bool EsIcono(QStyle::PixelMetric medida) {
  switch (medida) {
    case QStyle::PM_SmallIconSize:
    case QStyle::PM_ButtonIconSize:
    case QStyle::PM_ToolBarIconSize:
    case QStyle::PM_MessageBoxIconSize:
      return true;
    default:
      return false;
  }
}

bool SeApunta(QStyle::ContentsType clase) {
  switch (clase) {
    case QStyle::CT_PushButton:
    case QStyle::CT_ComboBox:
    case QStyle::CT_LineEdit:
    case QStyle::CT_SpinBox:
    case QStyle::CT_ToolButton:
    case QStyle::CT_CheckBox:
    case QStyle::CT_RadioButton:
    case QStyle::CT_MenuItem:
    case QStyle::CT_TabBarTab:
      return true;
    default:
      return false;
  }
}

}  // namespace

EstiloPropio::EstiloPropio(Tema tema) : QProxyStyle(QStringLiteral("Fusion")), tema_(tema) {}

void EstiloPropio::drawPrimitive(PrimitiveElement elemento, const QStyleOption* opcion, QPainter* pintor,
                                 const QWidget* control) const {
  if (elemento == PE_PanelButtonTool && opcion->state.testFlag(State_On)) return PintarApretado(*opcion, *pintor);
  QProxyStyle::drawPrimitive(elemento, opcion, pintor, control);
  if (!LlevaContorno(elemento)) return;
  QRect lugar = opcion->rect;
  if (elemento == PE_FrameGroupBox) lugar.setTop(lugar.top() + BajoElTitulo(*opcion, control));
  if (SeMarca(elemento)) return ContornearMarca(*opcion, *pintor, elemento == PE_IndicatorRadioButton);
  Contornear(*opcion, *pintor, lugar, kRedondeo);
}

// Where the frame of a group begins: the style draws it below the title, by its own measures, whatever is made of them
// here.
int EstiloPropio::BajoElTitulo(const QStyleOption& opcion, const QWidget* control) const {
  const auto* grupo = qobject_cast<const QGroupBox*>(control);
  if (grupo != nullptr && grupo->title().isEmpty() && !grupo->isCheckable()) return 0;
  const int marca = QProxyStyle::pixelMetric(PM_ExclusiveIndicatorHeight, &opcion, control);
  return std::max(marca, opcion.fontMetrics.height()) + kSobreElGrupo;
}

void EstiloPropio::drawComplexControl(ComplexControl elemento, const QStyleOptionComplex* opcion, QPainter* pintor,
                                      const QWidget* control) const {
  QProxyStyle::drawComplexControl(elemento, opcion, pintor, control);
  if (elemento == CC_ComboBox || elemento == CC_SpinBox) Contornear(*opcion, *pintor, opcion->rect, kRedondeo);
}

// Light, the style's own outlines do, but for who has the keyboard.
void EstiloPropio::Contornear(const QStyleOption& opcion, QPainter& pintor, const QRect& lugar, double redondeo) const {
  const bool foco = opcion.state.testFlag(State_HasFocus);
  if (tema_ == Tema::kClaro && !foco) return;
  const auto* marco = qstyleoption_cast<const QStyleOptionFrame*>(&opcion);
  if (marco != nullptr && marco->lineWidth == 0) return;
  const bool activo = opcion.state.testFlag(State_Enabled);
  QColor color = opcion.palette.color(activo ? QPalette::Active : QPalette::Disabled, QPalette::Dark);
  if (foco) color = ColorDe(Matiz::kAcento, opcion.palette);
  Trazar(opcion, pintor, lugar, redondeo, color);
}

// One that isn't ticked is nothing but its outline, which therefore stands out as letters do.
void EstiloPropio::ContornearMarca(const QStyleOption& opcion, QPainter& pintor, bool redonda) const {
  const bool activo = opcion.state.testFlag(State_Enabled);
  QColor color = opcion.palette.color(activo ? QPalette::Active : QPalette::Disabled,
                                      activo ? QPalette::PlaceholderText : QPalette::WindowText);
  if (opcion.state.testFlag(State_HasFocus)) color = ColorDe(Matiz::kAcento, opcion.palette);
  Trazar(opcion, pintor, opcion.rect, redonda ? opcion.rect.width() / 2.0 : kRedondeo, color);
}

void EstiloPropio::Trazar(const QStyleOption& opcion, QPainter& pintor, const QRect& lugar, double redondeo,
                          const QColor& color) const {
  const bool foco = opcion.state.testFlag(State_HasFocus);
  const bool activo = opcion.state.testFlag(State_Enabled);
  const double grueso = tema_ == Tema::kExteriores && activo ? kGruesoExteriores : 1;
  pintor.save();
  pintor.setRenderHint(QPainter::Antialiasing);
  const bool a_rayas = tema_ == Tema::kExteriores && !activo;
  pintor.setPen(QPen(color, foco ? grueso + 1 : grueso, a_rayas ? Qt::DashLine : Qt::SolidLine));
  pintor.setBrush(Qt::NoBrush);
  const double medio = (foco ? grueso + 1 : grueso) / 2;
  pintor.drawRoundedRect(QRectF(lugar).adjusted(medio, medio, -medio, -medio), redondeo, redondeo);
  pintor.restore();
}

// A tool that is pressed in: its state is told by an outline of full contrast, not by a shade alone.
void EstiloPropio::PintarApretado(const QStyleOption& opcion, QPainter& pintor) const {
  const QColor color = opcion.state.testFlag(State_Enabled) ? ColorDe(Matiz::kAcento, opcion.palette)
                                                            : opcion.palette.color(QPalette::Disabled, QPalette::Text);
  QColor fondo = color;
  fondo.setAlphaF(opcion.state.testFlag(State_MouseOver) ? 0.30F : 0.18F);
  const double grueso = tema_ == Tema::kExteriores ? kGruesoExteriores + 1 : 1.5;
  pintor.save();
  pintor.setRenderHint(QPainter::Antialiasing);
  pintor.setPen(QPen(color, grueso));
  pintor.setBrush(fondo);
  const double medio = grueso / 2;
  pintor.drawRoundedRect(QRectF(opcion.rect).adjusted(medio, medio, -medio, -medio), kRedondeo, kRedondeo);
  pintor.restore();
}

void EstiloPropio::drawItemText(QPainter* pintor, const QRect& lugar, int alineado, const QPalette& paleta, bool activo,
                                const QString& texto, QPalette::ColorRole papel) const {
  const QFont letra = pintor->font();
  pintor->setFont(LetraDe(activo, letra, paleta));
  QProxyStyle::drawItemText(pintor, lugar, alineado, paleta, activo, texto, papel);
  pintor->setFont(letra);
}

// The style asks for an icon in the mode of a pointer that is over it; on the ground of a selection it must be in that
// of a selection.
void EstiloPropio::drawControl(ControlElement elemento, const QStyleOption* opcion, QPainter* pintor,
                               const QWidget* control) const {
  const bool activo = opcion->state.testFlag(State_Enabled);
  if (const auto* celda = qstyleoption_cast<const QStyleOptionViewItem*>(opcion); celda != nullptr && !activo) {
    QStyleOptionViewItem otra = *celda;
    otra.font = LetraDe(activo, celda->font, celda->palette);
    return QProxyStyle::drawControl(elemento, &otra, pintor, control);
  }
  const auto* entrada = qstyleoption_cast<const QStyleOptionMenuItem*>(opcion);
  if (entrada == nullptr || elemento != CE_MenuItem) return QProxyStyle::drawControl(elemento, opcion, pintor, control);
  QStyleOptionMenuItem otra = *entrada;
  otra.font = LetraDe(activo, entrada->font, entrada->palette);
  if (entrada->icon.isNull() || !activo || !entrada->state.testFlag(State_Selected))
    return QProxyStyle::drawControl(elemento, &otra, pintor, control);
  const int lado = proxy()->pixelMetric(PM_SmallIconSize, opcion, control);
  QIcon icono;
  for (const QIcon::State estado : {QIcon::Off, QIcon::On}) {
    icono.addPixmap(entrada->icon.pixmap(QSize(lado, lado), QIcon::Selected, estado), QIcon::Active, estado);
  }
  otra.icon = icono;
  QProxyStyle::drawControl(elemento, &otra, pintor, control);
}

int EstiloPropio::pixelMetric(PixelMetric medida, const QStyleOption* opcion, const QWidget* control) const {
  int propia = medida == PM_ToolBarIconSize ? kIconoDeBarra : QProxyStyle::pixelMetric(medida, opcion, control);
  if (EsIcono(medida)) return static_cast<int>(std::lround(propia * EscalaDelTexto()));
  // A mark is as high as the words beside it, whatever their size.
  if (EsMarca(medida) && medida != PM_ScrollBarExtent)
    propia = std::max(propia, QFontMetrics(control != nullptr ? control->font() : QApplication::font()).ascent());
  return tema_ == Tema::kExteriores && EsMarca(medida) ? propia * 3 / 2 : propia;
}

QSize EstiloPropio::sizeFromContents(ContentsType clase, const QStyleOption* opcion, const QSize& tamano,
                                     const QWidget* control) const {
  const QSize propio = QProxyStyle::sizeFromContents(clase, opcion, tamano, control);
  const auto* entrada = qstyleoption_cast<const QStyleOptionMenuItem*>(opcion);
  const bool raya = entrada != nullptr && entrada->menuItemType == QStyleOptionMenuItem::Separator;
  if (tema_ != Tema::kExteriores || raya || !SeApunta(clase)) return propio;
  return propio.expandedTo(QSize(0, kBlancoExteriores));
}

QIcon EstiloPropio::standardIcon(StandardPixmap cual, const QStyleOption* opcion, const QWidget* control) const {
  const char* nombre = IconoDeMensaje(cual);
  return nombre != nullptr ? IconoDe(nombre) : QProxyStyle::standardIcon(cual, opcion, control);
}

QPixmap EstiloPropio::standardPixmap(StandardPixmap cual, const QStyleOption* opcion, const QWidget* control) const {
  const char* nombre = IconoDeMensaje(cual);
  if (nombre == nullptr) return QProxyStyle::standardPixmap(cual, opcion, control);
  const int lado = proxy()->pixelMetric(PM_MessageBoxIconSize, opcion, control);
  return IconoDe(nombre).pixmap(lado, lado);
}

}  // namespace utr
