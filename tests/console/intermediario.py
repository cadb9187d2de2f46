#!/usr/bin/env python3
"""intermediario.py PORT REQUESTS SIGNAL COMMAND...: runs a command that reaches the station at the TCP port PORT by way of this
program, at 127.0.0.1 and the port that stands for PUERTO in its arguments. When so many requests have come, the command gets the
signal, and only then the answer. Ends with the code of the command as a shell tells it.
"""
import os
import select
import signal
import socket
import subprocess
import sys


def main():
    puerto, pedidos, senial, *orden = sys.argv[1:]
    escucha = socket.create_server(("127.0.0.1", 0))
    orden = [parte.replace("PUERTO", str(escucha.getsockname()[1])) for parte in orden]
    hijo = subprocess.Popen(orden, preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
    fin = os.pidfd_open(hijo.pid)
    estacion, programa, vistos = None, None, 0
    while True:
        vigilados = [fin, escucha] + [s for s in (estacion, programa) if s]
        listos = select.select(vigilados, [], [])[0]
        if fin in listos:
            break
        if escucha in listos:
            programa, estacion = escucha.accept()[0], socket.create_connection(("127.0.0.1", int(puerto)))
        if programa in listos:
            pedido = programa.recv(4096)
            vistos += 1
            if vistos == int(pedidos):
                hijo.send_signal(getattr(signal, senial))
            estacion.sendall(pedido)
            if not pedido:
                programa = None
        if estacion in listos:
            respuesta = estacion.recv(65536)
            if respuesta and programa:
                programa.sendall(respuesta)
            elif not respuesta:
                estacion = None
    codigo = hijo.wait()
    sys.exit(codigo if codigo >= 0 else 128 - codigo)


main()
