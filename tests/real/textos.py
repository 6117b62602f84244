"""What the program's boxes say."""
ERASED, WRITTEN = "¡Ha terminado de borrar!", "¡Ha terminado de grabar!"
LOADED, RIGHT = "Ha terminado de cargar el archivo", "El programa de la Flash ha sido verificado, está correcto"
READ, CLEAN = "¡Ha terminado de Leer!", "La Flash ha sido verificada, está borrada"
BROKEN = "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla"
CLOSING = "Se está {} el chip. ¿Desea cerrar el programa y dejarlo a medias?"
QUESTION = ("No hay respuesta del Dispositivo, verifique la conexión con el puerto.\n"
            "Desea intentar conectarse?, si pulsa No, se saldrá del sistema")
