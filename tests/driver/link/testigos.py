"""testigos.py SERIAL_LINE TCP_PORT: reads a station with two clients that aren't ours and prints what each has seen, one
line a thing, for the test to compare with what the unit holds. mbpoll takes the serial line, pymodbus the TCP port.
"""
import re
import subprocess
import sys

from pymodbus.client import ModbusTcpClient
from pymodbus.file_message import FileRecord, ReadFileRecordRequest

UNIDAD = 120
LECTURAS = {"identidad": (0, 3), "estado": (3, 1), "reloj": (5, 6), "trama": (100, 38)}


def decir(testigo, que, valores):
    print(testigo, que, *valores, flush=True)


def mbpoll(linea, *argumentos, valores=()):
    orden = ["mbpoll", "-m", "rtu", "-b", "9600", "-P", "none", "-a", str(UNIDAD), "-0", "-1", "-o", "5", *argumentos, linea, *valores]
    paso = subprocess.run(orden, text=True, capture_output=True)
    # Values above 32767 are followed by their signed twin.
    leidos = re.findall(r"^\[\d+\]:\s+(-?\d+)", paso.stdout, re.MULTILINE)
    return leidos if paso.returncode == 0 else [paso.stderr.strip().rsplit(": ", 1)[-1]]


def con_mbpoll(linea):
    for que, (desde, cuantos) in LECTURAS.items():
        decir("mbpoll", que, mbpoll(linea, "-t", "3", "-r", str(desde), "-c", str(cuantos)))
    mbpoll(linea, "-t", "0", "-r", "0", valores=["1"])
    decir("mbpoll", "salidas", mbpoll(linea, "-t", "0", "-r", "0", "-c", "2"))
    decir("mbpoll", "lejos", mbpoll(linea, "-t", "3", "-r", "10000"))
    decir("mbpoll", "salida_lejos", mbpoll(linea, "-t", "0", "-r", "7"))


def con_pymodbus(puerto):
    cliente = ModbusTcpClient("127.0.0.1", port=puerto)
    assert cliente.connect()
    for que, (desde, cuantos) in LECTURAS.items():
        decir("pymodbus", que, cliente.read_input_registers(desde, cuantos, slave=UNIDAD).registers)
    cliente.write_coil(1, True, slave=UNIDAD)
    decir("pymodbus", "salidas", [int(bit) for bit in cliente.read_coils(0, 2, slave=UNIDAD).bits[:2]])
    decir("pymodbus", "lejos", [cliente.read_input_registers(10000, 1, slave=UNIDAD).exception_code])
    decir("pymodbus", "funcion", [cliente.read_holding_registers(0, 1, slave=UNIDAD).exception_code])
    pedido = ReadFileRecordRequest([
        FileRecord(file_number=256, record_number=5, record_length=96),
        FileRecord(file_number=1, record_number=4321, record_length=1)])
    pedido.unit_id = UNIDAD
    paginas, eco = (registro.record_data for registro in cliente.execute(pedido).records)
    decir("pymodbus", "paginas", [paginas.hex()])
    decir("pymodbus", "eco", [int.from_bytes(eco, "big")])
    cliente.close()


con_mbpoll(sys.argv[1])
con_pymodbus(int(sys.argv[2]))
