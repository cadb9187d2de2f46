#include "help/PaginasAyuda.h"

#include <algorithm>
#include <fstream>
#include <pugixml.hpp>
#include <set>
#include <sstream>

#include "base/Error.h"
#include "base/Texto.h"

namespace utr::ayuda {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Mal(const std::string& donde, const std::string& que) {
  throw Error(error::kArchivo, "Ayuda", donde + ": " + que);
}

std::string Escapado(std::string_view texto) {
  std::string salida = Reemplazar(texto, "&", "&amp;");
  salida = Reemplazar(salida, "<", "&lt;");
  salida = Reemplazar(salida, ">", "&gt;");
  return Reemplazar(salida, "\"", "&quot;");
}

// The words parted by a separator, without the blanks around them and without empty ones.
std::vector<std::string> Palabras(std::string_view texto, char separador) {
  std::vector<std::string> palabras;
  for (const std::string_view parte : Separar(texto, separador)) {
    const std::string_view palabra = Recortar(parte);
    if (!palabra.empty()) palabras.emplace_back(palabra);
  }
  return palabras;
}

// Every run of white space as one blank.
std::string EnUnRenglon(std::string_view texto) {
  std::istringstream entrada{std::string(texto)};
  std::vector<std::string> palabras;
  for (std::string palabra; entrada >> palabra;) palabras.push_back(palabra);
  return Unir(palabras, " ");
}

pugi::xml_document Leer(const fs::path& ruta) {
  pugi::xml_document documento;
  const pugi::xml_parse_result leido = documento.load_file(ruta.c_str(), pugi::parse_default | pugi::parse_ws_pcdata);
  if (!leido) Mal(ruta.filename().string(), std::string(leido.description()) + ", " + std::to_string(leido.offset));
  return documento;
}

// Makes one page: copies its HTML and replaces the elements that are our own.
class Redactor {
 public:
  Redactor(const FuentesAyuda& fuentes, const std::map<std::string, std::string>& titulos, PaginaHecha& pagina)
      : fuentes_(fuentes), titulos_(titulos), pagina_(pagina) {}

  void Cuerpo(const pugi::xml_node& nodo) {
    for (const pugi::xml_node& hijo : nodo) Nodo(hijo);
  }

  // What it says in plain words: the text of a node as the page has it.
  std::string Llano(const pugi::xml_node& nodo) {
    std::string texto;
    for (const pugi::xml_node& hijo : nodo) {
      const std::string_view nombre = hijo.name();
      if (hijo.type() == pugi::node_pcdata) {
        texto += hijo.value();
      } else if (nombre == "valor") {
        texto += fuentes_.valor(hijo.attribute("de").value());
      } else if (nombre == "ver") {
        texto += TextoDeVer(hijo);
      } else {
        texto += Llano(hijo);
      }
    }
    return EnUnRenglon(texto);
  }

 private:
  void Nodo(const pugi::xml_node& nodo) {
    const std::string_view nombre = nodo.name();
    if (nodo.type() == pugi::node_pcdata) {
      pagina_.html += Escapado(nodo.value());
    } else if (nombre == "campos") {
      Campos(nodo);
    } else if (nombre == "mensajes") {
      Mensajes(nodo);
    } else if (nombre == "tabla") {
      Tabla(nodo.attribute("de").value());
    } else if (nombre == "valor") {
      pagina_.html += Escapado(fuentes_.valor(nodo.attribute("de").value()));
    } else if (nombre == "ver") {
      const std::string cual = nodo.attribute("pagina").value();
      pagina_.enlaces.push_back(cual);
      pagina_.html += "<a href=\"" + cual + ".html\">" + Escapado(TextoDeVer(nodo)) + "</a>";
    } else {
      Propio(nodo);
    }
  }

  // HTML as it stands.
  void Propio(const pugi::xml_node& nodo) {
    static const std::set<std::string_view> conocidos{"p",  "h2", "h3",  "ul",    "ol", "li", "b", "i",
                                                      "tt", "br", "pre", "table", "tr", "td", "th"};
    const std::string nombre = nodo.name();
    if (!conocidos.contains(nombre)) Mal(pagina_.nombre, "<" + nombre + ">");
    pagina_.html += nombre == "table" ? std::string(kAbreTabla) : "<" + nombre + ">";
    for (const pugi::xml_node& hijo : nodo) Nodo(hijo);
    if (nombre != "br") pagina_.html += "</" + nombre + ">";
  }

  std::string TextoDeVer(const pugi::xml_node& nodo) const {
    const auto titulo = titulos_.find(nodo.attribute("pagina").value());
    if (titulo == titulos_.end())
      Mal(pagina_.nombre, std::string("lleva a ") + nodo.attribute("pagina").value() + ", que no está");
    const std::string propio = EnUnRenglon(nodo.text().get());
    return propio.empty() ? titulo->second : propio;
  }

  // The fields of a window: caption and words in the page, and for "¿Qué es esto?" under the name of the control.
  void Campos(const pugi::xml_node& nodo) {
    std::string ventana = nodo.attribute("ventana").value();
    if (ventana.empty() && !pagina_.ventanas.empty()) ventana = pagina_.ventanas.front();
    pagina_.html += std::string(kAbreTabla) + "<tr><th>Control</th><th>Para qué es</th></tr>";
    for (const pugi::xml_node& campo : nodo.children("campo")) {
      Fila(campo, campo.attribute("rotulo").value());
      for (const std::string& control : Palabras(campo.attribute("control").value(), ';')) {
        Explicar(ventana, control, Llano(campo));
      }
    }
    pagina_.html += "</table>";
  }

  void Mensajes(const pugi::xml_node& nodo) {
    pagina_.html += std::string(kAbreTabla) + "<tr><th>Mensaje</th><th>Qué significa y qué hacer</th></tr>";
    for (const pugi::xml_node& mensaje : nodo.children("mensaje")) Fila(mensaje, mensaje.attribute("texto").value());
    pagina_.html += "</table>";
  }

  void Fila(const pugi::xml_node& nodo, const std::string& cabeza) {
    if (cabeza.empty()) Mal(pagina_.nombre, "una fila sin título");
    pagina_.html += "<tr><td><b>" + Escapado(cabeza) + "</b></td><td>";
    Cuerpo(nodo);
    pagina_.html += "</td></tr>";
  }

  void Tabla(const std::string& nombre) {
    pagina_.html += kAbreTabla;
    const char* celda = "th";
    for (const auto& fila : fuentes_.tabla(nombre)) {
      pagina_.html += "<tr>";
      for (const std::string& texto : fila)
        pagina_.html += std::string("<") + celda + ">" + Escapado(texto) + "</" + celda + ">";
      pagina_.html += "</tr>";
      celda = "td";
    }
    pagina_.html += "</table>";
  }

  void Explicar(const std::string& ventana, const std::string& control, const std::string& texto) {
    if (ventana.empty()) Mal(pagina_.nombre, control + " no tiene ventana");
    pagina_.controles.push_back({ventana, control, texto});
  }

  static constexpr std::string_view kAbreTabla =
      "<table border=\"1\" cellspacing=\"0\" cellpadding=\"5\" width=\"100%\">";
  const FuentesAyuda& fuentes_;
  const std::map<std::string, std::string>& titulos_;
  PaginaHecha& pagina_;
};

void Completar(PaginaHecha& pagina, const pugi::xml_node& raiz, const FuentesAyuda& fuentes,
               const std::map<std::string, std::string>& titulos) {
  Redactor redactor(fuentes, titulos, pagina);
  const std::string para_que = redactor.Llano(raiz.child("p"));
  if (para_que.empty()) Mal(pagina.nombre, "no dice para qué es");
  for (const std::string& ventana : pagina.ventanas) pagina.controles.push_back({ventana, {}, para_que});
  const std::string titulo = Escapado(pagina.titulo);
  pagina.html = "<!DOCTYPE html>\n<html lang=\"es\"><head><meta charset=\"utf-8\"><title>" + titulo +
                "</title></head><body><h1>" + titulo + "</h1>";
  redactor.Cuerpo(raiz);
  pagina.html += "</body></html>\n";
}

// A control may be explained in one place only, or nobody knows which words hold.
void ExigirUnaVez(const std::map<std::string, PaginaHecha>& paginas) {
  std::set<std::pair<std::string, std::string>> vistos;
  for (const auto& [nombre, pagina] : paginas) {
    for (const ControlExplicado& uno : pagina.controles) {
      if (!vistos.emplace(uno.ventana, uno.control).second) Mal(nombre, "repite " + uno.ventana + "." + uno.control);
    }
  }
}

void Secciones(const pugi::xml_node& nodo, const std::map<std::string, PaginaHecha>& paginas,
               std::set<std::string>& puestas, std::string& salida) {
  for (const pugi::xml_node& hijo : nodo.children("seccion")) {
    const std::string nombre = hijo.attribute("pagina").value();
    const auto pagina = paginas.find(nombre);
    if (pagina == paginas.end()) Mal("contenido.xml", "no hay una página " + nombre);
    if (!puestas.insert(nombre).second) Mal("contenido.xml", "repite " + nombre);
    salida += "<section title=\"" + Escapado(pagina->second.titulo) + "\" ref=\"" + nombre + ".html\">";
    Secciones(hijo, paginas, puestas, salida);
    salida += "</section>\n";
  }
}

std::string Claves(const PaginaHecha& pagina) {
  std::string salida;
  const auto clave = [&](const std::string& nombre, const std::string& contexto) {
    salida += "<keyword name=\"" + Escapado(nombre) + "\"";
    if (!contexto.empty()) salida += " id=\"" + Escapado(contexto) + "\"";
    salida += " ref=\"" + pagina.nombre + ".html\"/>\n";
  };
  if (pagina.ventanas.empty()) clave(pagina.titulo, {});
  for (const std::string& ventana : pagina.ventanas) clave(pagina.titulo, ventana);
  for (const std::string& palabra : pagina.palabras) {
    if (!IgualSinCaso(palabra, pagina.titulo)) clave(palabra, {});
  }
  return salida;
}

}  // namespace

std::map<std::string, PaginaHecha> HacerPaginas(const fs::path& carpeta, const FuentesAyuda& fuentes) {
  std::map<std::string, pugi::xml_document> documentos;
  for (const auto& archivo : fs::directory_iterator(carpeta)) {
    if (archivo.path().extension() != ".xml" || archivo.path().filename() == "contenido.xml") continue;
    documentos[archivo.path().stem().string()] = Leer(archivo.path());
  }
  std::map<std::string, std::string> titulos;
  std::map<std::string, PaginaHecha> paginas;
  for (const auto& [nombre, documento] : documentos) {
    const pugi::xml_node raiz = documento.child("pagina");
    titulos[nombre] = raiz.attribute("titulo").value();
    if (titulos[nombre].empty()) Mal(nombre, "no tiene título");
    paginas[nombre] = {.nombre = nombre,
                       .titulo = titulos[nombre],
                       .ventanas = Palabras(raiz.attribute("ventanas").value(), ' '),
                       .palabras = Palabras(raiz.attribute("indice").value(), ';')};
  }
  for (auto& [nombre, pagina] : paginas) Completar(pagina, documentos[nombre].child("pagina"), fuentes, titulos);
  ExigirUnaVez(paginas);
  return paginas;
}

std::string HacerProyecto(const fs::path& contenido, const std::map<std::string, PaginaHecha>& paginas) {
  const pugi::xml_document documento = Leer(contenido);
  std::set<std::string> puestas;
  std::string secciones;
  Secciones(documento.child("contenido"), paginas, puestas, secciones);
  std::string claves;
  std::string archivos;
  for (const auto& [nombre, pagina] : paginas) {
    if (!puestas.contains(nombre)) Mal("contenido.xml", "falta " + nombre);
    claves += Claves(pagina);
    archivos += "<file>" + nombre + ".html</file>\n";
  }
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<QtHelpProject version=\"1.0\"><namespace>" +
         std::string(kEspacio) + "</namespace><virtualFolder>" + std::string(kCarpetaVirtual) +
         "</virtualFolder><filterSection>\n<toc>\n" + secciones + "</toc>\n<keywords>\n" + claves +
         "</keywords>\n<files>\n" + archivos + "<file>" + std::string(kArchivoControles) +
         "</file>\n</files>\n</filterSection></QtHelpProject>\n";
}

std::string HacerControles(const std::map<std::string, PaginaHecha>& paginas) {
  std::string salida;
  for (const auto& [nombre, pagina] : paginas) {
    for (const ControlExplicado& uno : pagina.controles)
      salida += uno.ventana + '\t' + uno.control + '\t' + uno.texto + '\n';
  }
  return salida;
}

}  // namespace utr::ayuda
