"""Opens GTK's print dialog, as many programs do; scripts/screenshots takes its picture."""
import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402, for the version above

operation = Gtk.PrintOperation(n_pages=1)
operation.run(Gtk.PrintOperationAction.PRINT_DIALOG, None)
