"""Processes under mpirun: the environment in which they start anywhere, and how to find them."""
import os
import pathlib

ENVIRONMENT = {**os.environ, "OMPI_ALLOW_RUN_AS_ROOT": "1", "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM": "1",
               "OMPI_MCA_rmaps_base_oversubscribe": "1", "OMPI_MCA_mpi_yield_when_idle": "1",
               "OMPI_MCA_btl_vader_single_copy_mechanism": "none",
               "OPENBLAS_NUM_THREADS": "1"}


def children_of(parent, name):
    """The processes below another one whose program has this name."""
    below, found = {parent}, []
    for _ in range(4):
        for folder in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                status = (folder / "stat").read_text()
                program = os.readlink(folder / "exe")
            except OSError:
                continue
            if int(status.rpartition(")")[2].split()[1]) in below:
                below.add(int(folder.name))
                if program.endswith("/" + name) and int(folder.name) not in found:
                    found.append(int(folder.name))
    return sorted(found)
