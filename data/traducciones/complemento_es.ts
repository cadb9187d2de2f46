<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- Texts of Qt's dialogs that its own Spanish catalogue lacks, has wrong, or words unlike the rest of this program. -->
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>QAbstractFileIconProvider</name>
    <message>
        <source>Drive</source>
        <translation>Unidad</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>File Folder</source>
        <comment>Match Windows Explorer</comment>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <comment>All other platforms</comment>
        <translation>Acceso directo</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>Desconocido</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Go to the parent directory</source>
        <translation>Ir al directorio superior</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>&amp;Nombre de archivo:</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Archivos de tipo:</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Todos los archivos (*)</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>Mostrar los arc&amp;hivos ocultos</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>El archivo %1 ya existe.
¿Desea reemplazarlo?</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
Archivo no encontrado.
Verifique que el nombre del archivo es correcto.</translation>
    </message>
</context>
<context>
    <name>QPrintDialog</name>
    <message>
        <source>Print To File ...</source>
        <translation>Imprimir a archivo...</translation>
    </message>
    <message>
        <source>%1 is a directory.
Please choose a different file name.</source>
        <translation>%1 es una carpeta.
Elija otro nombre de archivo.</translation>
    </message>
    <message>
        <source>File %1 is not writable.
Please choose a different file name.</source>
        <translation>No se puede escribir en el archivo %1.
Elija otro nombre de archivo.</translation>
    </message>
</context>
<context>
    <name>QPrintPropertiesWidget</name>
    <message>
        <source>Advanced</source>
        <translation>Avanzadas</translation>
    </message>
    <message>
        <source>There are conflicts in some options. Please fix them.</source>
        <translation>Algunas opciones no son compatibles entre sí. Corríjalas.</translation>
    </message>
</context>
<context>
    <name>QPrintSettingsOutput</name>
    <message>
        <source>Double Sided Printing</source>
        <translation>Impresión a doble cara</translation>
    </message>
    <message>
        <source>Long side binding</source>
        <translation>Encuadernar por el lado largo</translation>
    </message>
    <message>
        <source>Short side binding</source>
        <translation>Encuadernar por el lado corto</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>No</translation>
    </message>
    <message>
        <source>Page Set:</source>
        <translation>Conjunto de páginas:</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Páginas</translation>
    </message>
    <message>
        <source>Specify pages or ranges separated by commas. Ranges are specified by two numbers separated by a hyphen. E.g: 3,5-7,9 prints pages 3, 5, 6, 7 and 9.</source>
        <translation>Indique páginas o intervalos separados por comas. Un intervalo son dos números separados por un guion. Por ejemplo, 3,5-7,9 imprime las páginas 3, 5, 6, 7 y 9.</translation>
    </message>
</context>
<context>
    <name>QPrintWidget</name>
    <message>
        <source>Output &amp;file:</source>
        <translation>Archivo de &amp;salida:</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Mayús</translation>
    </message>
</context>
</TS>
