"""lectura_pymodbus.py TCP_PORT TRACKS: reads so many tracks of flash in the requests that the driver makes, three pages
and the echo in each, and prints the seconds that it took. The start of the interpreter isn't among them.
"""
import sys
import time

from pymodbus.client import ModbusTcpClient
from pymodbus.file_message import FileRecord, ReadFileRecordRequest

UNIDAD, FLASH, ECO = 255, 256, 1
PAGINAS, POR_PEDIDO, REGISTROS = 1024, 3, 32

cliente = ModbusTcpClient("127.0.0.1", port=int(sys.argv[1]))
assert cliente.connect()
antes = time.perf_counter()
for pista in range(int(sys.argv[2])):
    for pagina in range(0, PAGINAS, POR_PEDIDO):
        cuantas = min(POR_PEDIDO, PAGINAS - pagina)
        pedido = ReadFileRecordRequest([
            FileRecord(file_number=FLASH + pista, record_number=pagina, record_length=cuantas * REGISTROS),
            FileRecord(file_number=ECO, record_number=1, record_length=1)])
        pedido.unit_id = UNIDAD
        assert len(cliente.execute(pedido).records[0].record_data) == cuantas * 2 * REGISTROS
print(time.perf_counter() - antes)
