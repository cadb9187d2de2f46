# Sourced by the scripts of the root: where the project is, and surroundings that don't depend on the machine's.
RAIZ=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$RAIZ"

# Qt wants an UTF-8 locale; a bare server has none.
[[ $(locale charmap 2>/dev/null) == UTF-8 ]] || export LC_ALL=C.UTF-8

mkdir -p "$RAIZ/build"
# Qt puts a folder of its own into /tmp where a session gave it none.
if [[ -z ${XDG_RUNTIME_DIR:-} ]]; then
  mkdir -p -m 700 "$RAIZ/build/sesion"
  export XDG_RUNTIME_DIR="$RAIZ/build/sesion"
fi

# construir PRESET: configures and builds one of the presets.
construir() {
  cmake --preset "$1" >"$RAIZ/build/configurar-$1.txt" 2>&1 || { cat "$RAIZ/build/configurar-$1.txt" >&2; return 1; }
  cmake --build --preset "$1"
}

# probar PRESET: runs the tests of a preset that is built, and leaves the counts in `pasadas` and `fallidas`.
# Fails when a test fails, and when none ran.
probar() {
  local informe="$RAIZ/build/pruebas-$1.xml" estado=0 total sin_correr
  pasadas=0 fallidas=0
  rm -f "$informe"
  QT_QPA_PLATFORM=offscreen ctest --preset "$1" --no-tests=error --output-junit "$informe" |
    sed -E '/^ +Start +[0-9]+: /d; s/ \.{4,} */ ... /' || estado=$?
  [[ -s $informe ]] || { echo "No test ran." >&2; return 1; }
  total=$(cuenta "$informe" tests)
  fallidas=$(cuenta "$informe" failures)
  sin_correr=$(($(cuenta "$informe" skipped) + $(cuenta "$informe" disabled)))
  pasadas=$((total - fallidas - sin_correr))
  [[ $sin_correr -eq 0 ]] || echo "$sin_correr skipped"
  [[ $pasadas -gt 0 && $fallidas -eq 0 ]] || return 1
  return "$estado"
}

# cuenta FILE NAME: one of the totals that the report carries on its outermost element.
cuenta() {
  local valor
  valor=$(tr '\n' ' ' <"$1" | sed -n "s/.*<testsuite [^>]*[[:space:]]$2=\"\([0-9]*\)\".*/\1/p")
  echo "${valor:-0}"
}
